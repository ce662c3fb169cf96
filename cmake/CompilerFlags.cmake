# Warnings and sanitizers, for every target of the project when it is built by itself.

add_compile_options(-Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
                    $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>)
if(VELLOREADER_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()

if(VELLOREADER_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(VELLOREADER_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()

if(VELLOREADER_BUILD_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
