# What Debian wants of the files in a package.
set(usr ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)

# In the system's own directories the loader finds the library by itself, and search paths in programs are unwelcome.
file(GLOB_RECURSE files ${usr}/bin/* ${usr}/lib/*.so)
foreach(file IN LISTS files)
  if(NOT IS_SYMLINK ${file})
    file(RPATH_REMOVE FILE ${file})
  endif()
endforeach()

configure_file(${CPACK_VELLOREADER_CHANGELOG} ${usr}/share/doc/velloreader/changelog.Debian COPYONLY)
configure_file(${CPACK_VELLOREADER_OVERRIDES} ${usr}/share/lintian/overrides/velloreader COPYONLY)

# Manual pages and changelogs are compressed. With this variable the result holds no time, so that equal sources give
# equal files.
set(epoch "$ENV{SOURCE_DATE_EPOCH}")
set(ENV{SOURCE_DATE_EPOCH} 0)
file(GLOB files ${usr}/share/man/man*/* ${usr}/share/doc/*/changelog*)
foreach(file IN LISTS files)
  file(ARCHIVE_CREATE OUTPUT ${file}.gz PATHS ${file} FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9)
  file(REMOVE ${file})
endforeach()
if(epoch STREQUAL "")
  unset(ENV{SOURCE_DATE_EPOCH})
else()
  set(ENV{SOURCE_DATE_EPOCH} "${epoch}")
endif()

# Everybody may read them, whatever umask the package was made with.
set(readable OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(CHMOD_RECURSE ${usr}/share PERMISSIONS ${readable} DIRECTORY_PERMISSIONS ${readable} OWNER_EXECUTE GROUP_EXECUTE
     WORLD_EXECUTE)
file(CHMOD_RECURSE ${usr} DIRECTORY_PERMISSIONS ${readable} OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)
