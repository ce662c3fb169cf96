# What "cmake --install" puts below the prefix.

include(CMakePackageConfigHelpers)

set(cmake_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VelloReader)

install(TARGETS velloreader EXPORT VelloReader LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES $<TARGET_FILE_DIR:velloreader>/libzov.inventor.io.flt DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS SoFLTFileKit LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})

# The programs find the library beside them, wherever the prefix is. Package.cmake takes this away again.
if(TARGET flt2iv)
  file(RELATIVE_PATH library_from_programs /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(flt2iv fltshot PROPERTIES INSTALL_RPATH "$ORIGIN/${library_from_programs}")
endif()

# What a host includes. Include paths are those of the sources: "plugin/Plugin.h".
set(public_headers
    convert/FltRecordDeclarations.h convert/FltToInventor.h convert/FltToObject.h
    parser/FltCreationVisitor.h parser/FltFileInput.h parser/FltInput.h parser/FltObserver.h parser/FltParser.h
    messages/FltWarningMessage.h messages/FltWarningMessageConsole.h
    plugin/Plugin.h plugin/SoInputFltReader.h
    records/FltRecord.h records/FltVersion.h
    statistics/FltStatisticsTool.h
    toolkit/SbFileHelper.h toolkit/SideFile.h toolkit/SoInputQueries.h toolkit/SoInputReader.h toolkit/SoRefCounter.h
    toolkit/VelloReaderExport.h)
foreach(header IN LISTS public_headers)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VelloReader/${folder})
endforeach()

# find_package(VelloReader) and pkg-config
configure_package_config_file(cmake/VelloReaderConfig.cmake.in VelloReaderConfig.cmake
                              INSTALL_DESTINATION ${cmake_package_dir})
write_basic_package_version_file(VelloReaderConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VelloReaderConfig.cmake ${PROJECT_BINARY_DIR}/VelloReaderConfigVersion.cmake
        DESTINATION ${cmake_package_dir})
install(EXPORT VelloReader NAMESPACE VelloReader:: FILE VelloReaderTargets.cmake DESTINATION ${cmake_package_dir})

file(RELATIVE_PATH prefix_from_pkgconfig /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/velloreader.pc.in velloreader.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/velloreader.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# Python
install(FILES python/velloreader/__init__.py python/velloreader/py.typed
        DESTINATION ${VELLOREADER_PYTHON_DIR}/velloreader)
install(TARGETS velloreader_python LIBRARY DESTINATION ${VELLOREADER_PYTHON_DIR}/velloreader)

# Manual pages, compressed and without a time stamp, so that equal sources give equal files
find_program(GZIP_PROGRAM gzip REQUIRED)
function(install_compressed source name destination)
  set(result ${PROJECT_BINARY_DIR}/compressed/${name}.gz)
  add_custom_command(OUTPUT ${result} DEPENDS ${source} VERBATIM
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/compressed
    COMMAND ${CMAKE_COMMAND} -E copy ${source} ${PROJECT_BINARY_DIR}/compressed/${name}
    COMMAND ${GZIP_PROGRAM} -9nf ${PROJECT_BINARY_DIR}/compressed/${name})
  add_custom_target(compress_${name} ALL DEPENDS ${result})
  install(FILES ${result} DESTINATION ${destination})
endfunction()
if(TARGET flt2iv)
  install_compressed(${PROJECT_SOURCE_DIR}/man/flt2iv.1 flt2iv.1 ${CMAKE_INSTALL_MANDIR}/man1)
  install_compressed(${PROJECT_SOURCE_DIR}/man/fltshot.1 fltshot.1 ${CMAKE_INSTALL_MANDIR}/man1)
endif()

# What desktops know of the format
install(FILES share/mime/packages/velloreader.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)

set(documents ${CMAKE_INSTALL_DATADIR}/doc/velloreader)
install(FILES packaging/copyright DESTINATION ${documents})
install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog ${documents})
install_compressed(${PROJECT_SOURCE_DIR}/packaging/changelog changelog.Debian ${documents})
