# In the system's own directories the loader finds the library by itself, and search paths in programs are unwelcome.
file(GLOB_RECURSE files ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/bin/* ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/lib/*.so)
foreach(file IN LISTS files)
  if(NOT IS_SYMLINK ${file})
    file(RPATH_REMOVE FILE ${file})
  endif()
endforeach()
