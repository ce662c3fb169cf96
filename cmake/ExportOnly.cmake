# export_only(TARGET [CLASSES class...] [FUNCTIONS function...])
#
# Has a library show others the members and the type information of these classes, and these functions of C. The
# compiler by itself shows more: whatever it makes of the standard library's templates. Calls among the functions
# that are shown go straight to them.
#
# Names of C++ are matched as object files hold them: for people, the name of a template's function begins with its
# result, which may be one of these classes.
function(export_only target)
  cmake_parse_arguments(PARSE_ARGV 1 shown "" "" "CLASSES;FUNCTIONS")
  set(names ${shown_FUNCTIONS})
  foreach(class IN LISTS shown_CLASSES)
    string(LENGTH ${class} length)
    set(name ${length}${class})
    list(APPEND names _ZN${name}* _ZNK${name}* _ZT[ISV]${name} _ZT[ISV]N${name}*)
  endforeach()
  list(JOIN names ";\n    " lines)
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
  file(CONFIGURE OUTPUT ${script} CONTENT "{\n  global:\n    @lines@;\n  local:\n    *;\n};\n" @ONLY)
  target_link_options(${target} PRIVATE LINKER:--version-script,${script} LINKER:-Bsymbolic-functions)
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()
