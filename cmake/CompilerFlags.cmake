# Warnings and sanitizers, for every target of the project.

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow=local -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual)
if(VELLOREADER_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()

if(VELLOREADER_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
