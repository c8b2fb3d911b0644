# Turns ld's --output-def listing ("Name = Name@8 @1") into the decorated list
# dlltool needs to make an import library for undecorated __stdcall exports.
file(STRINGS ${IN} lines)
set(out "EXPORTS\n")
foreach(line IN LISTS lines)
  if(line MATCHES "^[ \t]*[^ \t]+ = ([^ \t]+)")
    string(APPEND out "${CMAKE_MATCH_1}\n")
  elseif(line MATCHES "^[ \t]*([^ \t=]+)[ \t]+@[0-9]+")
    string(APPEND out "${CMAKE_MATCH_1}\n")
  endif()
endforeach()
file(WRITE ${OUT} "${out}")
