# What people get stands in one list: what is installed belongs to the target "product", which "./dev build" makes.

add_custom_target(product)

# Installs a target. Further words go to install(TARGETS).
function(install_target target)
  install(TARGETS ${target} ${ARGN})
  add_dependencies(product ${target})
endfunction()

# Installs files that a target makes. The words go to install(FILES).
function(install_files_of target)
  install(FILES ${ARGN})
  add_dependencies(product ${target})
endfunction()

# Has every build say that a program isn't part of it.
function(leave_out program reason)
  message(STATUS "${program} is left out: ${reason}")
  add_custom_target(${program}_left_out COMMAND ${CMAKE_COMMAND} -E echo "${program} is left out: ${reason}"
                    COMMENT "" VERBATIM)
  add_dependencies(product ${program}_left_out)
endfunction()
