# Makes one C++ source of the page: cmake -DPAGE=FOLDER -DOUTPUT=FILE -P embed.cmake
#
# Style and script stand in the page itself, and the page tells their hashes, so that a browser runs these and no other.

# The digits of a SHA-256 in base64, as content security policies take it.
function(hash_of content result)
  set(digits "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  string(SHA256 hex "${content}")
  set(hex "${hex}00") # 32 bytes are one short of eleven groups
  set(text "")
  foreach(group RANGE 10)
    math(EXPR at "${group} * 6")
    string(SUBSTRING "${hex}" ${at} 6 bytes)
    foreach(shift 18 12 6 0)
      math(EXPR digit "(0x${bytes} >> ${shift}) & 63")
      string(SUBSTRING "${digits}" ${digit} 1 digit)
      string(APPEND text "${digit}")
    endforeach()
  endforeach()
  string(REGEX REPLACE "A$" "=" text "${text}")
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

# A browser hashes the lines as it reads them, which end in a line feed.
foreach(name html css js)
  file(READ "${PAGE}/page.${name}" ${name})
  string(REPLACE "\r" "" ${name} "${${name}}")
endforeach()
hash_of("${css}" style_hash)
hash_of("${js}" script_hash)
string(REPLACE "{{style-hash}}" "${style_hash}" html "${html}")
string(REPLACE "{{script-hash}}" "${script_hash}" html "${html}")
string(REPLACE "{{style}}" "${css}" html "${html}")
string(REPLACE "{{script}}" "${js}" html "${html}")
file(WRITE "${OUTPUT}" "// Made of page.html, page.css and page.js.
#include \"batch/pagetemplate.h\"

std::string_view PageTemplate() {
  return R\"page(${html})page\";
}
")
