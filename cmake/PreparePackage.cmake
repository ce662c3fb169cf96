# What Debian wants of the files in the packages.
set(readable OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

# Manual pages and changelogs are compressed. With this variable the result holds no time, so that equal sources give
# equal files.
set(epoch "$ENV{SOURCE_DATE_EPOCH}")
set(ENV{SOURCE_DATE_EPOCH} 0)

# Prepares the files of one package below a directory. Checks of Debian that don't fit it stand in a file.
function(prepare package usr overrides)
  # In the system's own directories the loader finds the library by itself, and search paths in programs are unwelcome.
  file(GLOB_RECURSE files ${usr}/bin/* ${usr}/lib/*.so)
  foreach(file IN LISTS files)
    if(NOT IS_SYMLINK ${file})
      file(RPATH_REMOVE FILE ${file})
    endif()
  endforeach()

  configure_file(${CPACK_VELLOREADER_CHANGELOG} ${usr}/share/doc/${package}/changelog.Debian COPYONLY)
  configure_file(${overrides} ${usr}/share/lintian/overrides/${package} COPYONLY)

  file(GLOB files ${usr}/share/man/man*/* ${usr}/share/doc/*/changelog*)
  foreach(file IN LISTS files)
    file(ARCHIVE_CREATE OUTPUT ${file}.gz PATHS ${file} FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9)
    file(REMOVE ${file})
  endforeach()

  # Everybody may read them, whatever umask the package was made with.
  file(CHMOD_RECURSE ${usr}/share PERMISSIONS ${readable} DIRECTORY_PERMISSIONS ${readable} OWNER_EXECUTE GROUP_EXECUTE
       WORLD_EXECUTE)
  file(GLOB scripts ${usr}/share/velloreader/slurm/*)
  if(scripts)
    file(CHMOD ${scripts} PERMISSIONS ${readable} OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)
  endif()
  file(CHMOD_RECURSE ${usr} DIRECTORY_PERMISSIONS ${readable} OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)
endfunction()

prepare(velloreader ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/Unspecified/usr ${CPACK_VELLOREADER_OVERRIDES})
if(EXISTS ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/view)
  prepare(velloreader-view ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/view/usr ${CPACK_VELLOREADER_OVERRIDES}-view)
endif()

if(epoch STREQUAL "")
  unset(ENV{SOURCE_DATE_EPOCH})
else()
  set(ENV{SOURCE_DATE_EPOCH} "${epoch}")
endif()
