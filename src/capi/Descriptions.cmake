# Writes the sentences that describe the members into a C++ source: cmake -DIDL=… -DOUTPUT=… -P Descriptions.cmake
file(READ ${IDL} text)
# Brackets and semicolons mean something in lists.
string(REGEX REPLACE "[][]" "" text "${text}")
string(REPLACE ";" "@" text "${text}")
set(sentence "helpstring\\((\"[^\n]*\")\\)\n +[A-Za-z0-9_]+\\*? ([A-Za-z0-9_]+)\\(")
string(REGEX MATCHALL "${sentence}" found "${text}")
set(entries "")
foreach(member ${found})
  string(REGEX REPLACE "${sentence}" "    {\"\\2\", \\1},\n" entry "${member}")
  string(REPLACE "@" ";" entry "${entry}")
  # A property has its sentence for reading and for writing.
  string(FIND "${entries}" "${entry}" known)
  if(known EQUAL -1)
    string(APPEND entries "${entry}")
  endif()
endforeach()
file(WRITE ${OUTPUT} "#include \"capi/Descriptions.h\"

namespace capi {

std::span<const Description> descriptions() {
  static constexpr Description kAll[] = {
${entries}  };
  return kAll;
}

}  // namespace capi
")
