# Run as a script: writes a C++ source that holds the bytes of files, and their SHA-256 in hexadecimal digits.
#   output     the source
#   namespace  that its names stand in
#   files      "name=path" each: the bytes become NAME, the sum NAMESum

set(text "// Made by cmake/EmbedFiles.cmake.\n#include <string_view>\n\n")
set(views "")
foreach(file IN LISTS files)
  string(REGEX MATCH "^([^=]+)=(.+)$" matched "${file}")
  set(name ${CMAKE_MATCH_1})
  set(path ${CMAKE_MATCH_2})
  file(READ "${path}" bytes HEX)
  file(SHA256 "${path}" sum)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND text "static char const ${name}Bytes[] = {${bytes}};\n")
  string(APPEND views "extern std::string_view const ${name};\nstd::string_view const ${name}(${name}Bytes, sizeof ${name}Bytes);\n"
         "extern std::string_view const ${name}Sum;\nstd::string_view const ${name}Sum = \"${sum}\";\n")
endforeach()
string(APPEND text "\nnamespace ${namespace}\n{\n\n${views}\n} // namespace ${namespace}\n")
file(WRITE "${output}" "${text}")
