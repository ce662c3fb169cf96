# Has the Debian packages checked, and looks at their contents.

function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(GLOB packages ${PACKAGES}/*.deb)
run(${LINTIAN} --allow-root --fail-on error,warning ${packages})
file(GLOB package ${PACKAGES}/velloreader_*.deb)

run(dpkg-deb --field ${package} Version)
if(NOT output STREQUAL "${VERSION}\n")
  message(FATAL_ERROR "the package's version isn't ${VERSION}: ${output}")
endif()

run(dpkg-deb --field ${package} Depends)
if(NOT output MATCHES "libcoin80c")
  message(FATAL_ERROR "the package doesn't depend on the toolkit: ${output}")
endif()

string(REGEX REPLACE "-[^-]*$" "" release "${VERSION}")
run(dpkg-deb --contents ${package})
foreach(file
    bin/flt2iv bin/flt2gltf bin/fltreport bin/flttileset bin/fltshot bin/fltinfo bin/fltcheck include/VelloReader/plugin/Plugin.h ${LIBRARIES}/libzov.inventor.io.flt.so
    "${LIBRARIES}/libzov.inventor.io.flt -> libzov.inventor.io.flt.so" ${LIBRARIES}/libSoFLTFileKit.so
    ${LIBRARIES}/cmake/VelloReader/VelloReaderConfig.cmake ${LIBRARIES}/pkgconfig/velloreader.pc
    lib/python3/dist-packages/velloreader/__init__.py lib/python3/dist-packages/velloreader/py.typed
    lib/python3/dist-packages/velloreader/libvelloreader_python.so
    lib/python3/dist-packages/velloreader-${release}.dist-info/METADATA
    share/doc/velloreader/copyright share/doc/velloreader/changelog.gz share/doc/velloreader/changelog.Debian.gz
    share/man/man1/flt2iv.1.gz share/man/man1/flt2gltf.1.gz share/man/man1/fltreport.1.gz share/man/man1/flttileset.1.gz share/man/man1/fltshot.1.gz share/man/man1/fltinfo.1.gz share/man/man1/fltcheck.1.gz
    share/bash-completion/completions/fltinfo share/zsh/vendor-completions/_fltcheck
    share/fish/vendor_completions.d/fltcheck.fish share/mime/packages/velloreader.xml
    share/velloreader/blender/import_openflight.py
    share/velloreader/slurm/convert.sbatch share/velloreader/slurm/merge.sbatch
    share/velloreader/schemas/fltinfo.schema.json share/thumbnailers/velloreader.thumbnailer
    share/doc/velloreader/examples/airfield.flt share/doc/velloreader/examples/airfield/terminal.flt)
  string(FIND "${output}" " ./usr/${file}\n" position)
  if(position EQUAL -1)
    message(FATAL_ERROR "${file} isn't in the package:\n${output}")
  endif()
endforeach()

# The program with a window has a package of its own, where it is built.
if(output MATCHES "fltview")
  message(FATAL_ERROR "fltview is in the wrong package:\n${output}")
endif()
file(GLOB package ${PACKAGES}/velloreader-view_*.deb)
if(package)
  run(dpkg-deb --field ${package} Depends)
  if(NOT output MATCHES "velloreader \\(= ${VERSION}\\)" OR NOT output MATCHES "libsoqt")
    message(FATAL_ERROR "the viewer's package doesn't depend on what it needs: ${output}")
  endif()
  run(dpkg-deb --contents ${package})
  foreach(file bin/fltview share/man/man1/fltview.1.gz share/applications/fltview.desktop
      share/metainfo/io.velloreader.fltview.metainfo.xml)
    string(FIND "${output}" " ./usr/${file}\n" position)
    if(position EQUAL -1)
      message(FATAL_ERROR "${file} isn't in the viewer's package:\n${output}")
    endif()
  endforeach()
endif()
