# What "cmake --install" puts below the prefix. What has to be built for that goes through the functions of
# Product.cmake.

include(CMakePackageConfigHelpers)

set(cmake_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VelloReader)

install_target(velloreader EXPORT VelloReader LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install_files_of(velloreader $<TARGET_FILE_DIR:velloreader>/libzov.inventor.io.flt DESTINATION ${CMAKE_INSTALL_LIBDIR})
install_target(SoFLTFileKit LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})

# The programs find the library by its place relative to theirs, in any prefix. PreparePackage.cmake removes this.
if(TARGET flt2iv)
  file(RELATIVE_PATH library_from_programs /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(flt2iv flt2gltf fltreport flttileset fltshot fltinfo fltcheck PROPERTIES
                        INSTALL_RPATH "$ORIGIN/${library_from_programs}")
endif()

# What a host includes. Include paths are those of the sources: "plugin/Plugin.h".
set(public_headers
    convert/FltRecordDeclarations.h convert/FltToInventor.h convert/FltToObject.h
    globe/FltGlobe.h globe/FltGlobeError.h globe/FltGlobeFrame.h
    gltf/FltGltf.h gltf/FltGltfError.h gltf/FltGltfOptions.h gltf/FltGltfReport.h
    parser/FltCreationVisitor.h parser/FltFileInput.h parser/FltInput.h parser/FltObserver.h parser/FltParser.h
    messages/FltWarningMessage.h messages/FltWarningMessageConsole.h
    plugin/Plugin.h plugin/SoInputFltReader.h
    records/FltColumn.h records/FltColumnBytes.h records/FltFieldReceiver.h records/FltRecord.h records/FltRecordCategory.h
    records/FltRecordMemory.h records/FltVersion.h
    statistics/FltStatisticsTool.h
    textures/FltTexture.h textures/FltTextureAttributes.h textures/PicturePixels.h
    toolkit/SbFileHelper.h toolkit/SideFile.h toolkit/SoInputQueries.h toolkit/SoInputReader.h toolkit/SoRefCounter.h
    toolkit/VelloReaderExport.h
    visual/FltDegreeOfFreedom.h visual/FltJointMotion.h visual/FltMesh.h visual/FltMeshIndices.h
    visual/FltOmission.h visual/FltReference.h visual/FltSwitch.h visual/FltVisualControls.h visual/FltVisualNode.h
    visual/FltVisualFlipBook.h visual/FltVisualOptions.h visual/FltVisualRecord.h visual/FltVisualSenses.h
    visual/FltVisualSwitch.h visual/FltVisualWalk.h)
foreach(header IN LISTS public_headers)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VelloReader/${folder})
endforeach()
set(loader_headers loader/FltDatabaseInfo.h loader/FltLoadError.h loader/FltLoader.h loader/FltLoadReport.h
    loader/FltMessage.h loader/FltProjection.h loader/FltRecordReader.h loader/FltScene.h loader/FltVisual.h)
foreach(header IN LISTS loader_headers)
  install(FILES src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VelloReader)
  # Other headers include them by their paths in the sources.
  get_filename_component(name ${header} NAME)
  file(WRITE ${PROJECT_BINARY_DIR}/installed/${header} "#include \"../${name}\"\n")
  install(FILES ${PROJECT_BINARY_DIR}/installed/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VelloReader/loader)
endforeach()
set(documented_headers ${public_headers} ${loader_headers})
list(TRANSFORM documented_headers PREPEND ${PROJECT_SOURCE_DIR}/src/)
list(JOIN documented_headers " " documented_headers)
configure_file(lint/Doxyfile.in Doxyfile @ONLY)

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

# Python, with what tells its tools of the package. It has no list of files, by which they would take it away.
set(python_package_dir ${PROJECT_BINARY_DIR}/python)
install_files_of(python_package ${python_package_dir}/velloreader/__init__.py ${PROJECT_SOURCE_DIR}/python/velloreader/py.typed
                 DESTINATION ${VELLOREADER_PYTHON_DIR}/velloreader)
install(FILES ${python_package_dir}/METADATA python/INSTALLER
        DESTINATION ${VELLOREADER_PYTHON_DIR}/velloreader-${PROJECT_VERSION}.dist-info)
install_target(velloreader_python LIBRARY DESTINATION ${VELLOREADER_PYTHON_DIR}/velloreader)

# What the programs print as JSON
install(FILES docs/schemas/fltinfo.schema.json docs/schemas/fltcheck.schema.json docs/schemas/fltreport.schema.json
        DESTINATION ${CMAKE_INSTALL_DATADIR}/velloreader/schemas)

# The add-on for Blender
install(FILES share/velloreader/blender/import_openflight.py DESTINATION ${CMAKE_INSTALL_DATADIR}/velloreader/blender)
install(PROGRAMS share/velloreader/slurm/convert.sbatch share/velloreader/slurm/merge.sbatch
        DESTINATION ${CMAKE_INSTALL_DATADIR}/velloreader/slurm)

# What desktops know of the format
install(FILES share/mime/packages/velloreader.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES share/thumbnailers/velloreader.thumbnailer DESTINATION ${CMAKE_INSTALL_DATADIR}/thumbnailers)

# The program with a window
if(TARGET fltview)
  set_target_properties(fltview PROPERTIES INSTALL_RPATH "$ORIGIN/${library_from_programs}")
  install_target(fltview RUNTIME COMPONENT view)
  install(FILES share/applications/fltview.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT view)
  install(FILES share/metainfo/io.velloreader.fltview.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo
          COMPONENT view)
  install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/velloreader-view COMPONENT view)
  install(FILES CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/velloreader-view RENAME changelog COMPONENT view)
endif()

set(documents ${CMAKE_INSTALL_DATADIR}/doc/velloreader)

# The sample, to try the programs on
if(TARGET make_sample)
  set(sample ${PROJECT_BINARY_DIR}/sample)
  set(sample_files airfield/terminal.flt airfield/asphalt.png airfield/corrugation.rgb airfield/windows.png)
  list(TRANSFORM sample_files PREPEND ${sample}/)
  add_custom_command(OUTPUT ${sample}/airfield.flt ${sample_files}
                     COMMAND ${CMAKE_COMMAND} -E make_directory ${sample}
                     COMMAND make_sample --force ${sample}/airfield.flt DEPENDS make_sample
                     COMMENT "Writing the sample" VERBATIM)
  add_custom_target(sample ALL DEPENDS ${sample}/airfield.flt ${sample_files})
  install_files_of(sample ${sample}/airfield.flt DESTINATION ${documents}/examples)
  install_files_of(sample ${sample_files} DESTINATION ${documents}/examples/airfield)
endif()
install(FILES packaging/copyright DESTINATION ${documents})
install(FILES CHANGELOG.md DESTINATION ${documents} RENAME changelog)
