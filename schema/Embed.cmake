# Writes statement files into a C++ source as the function NAME, so that programs carry them:
# cmake -DNAME=… -DOUTPUT=… -DFILES=… -P Embed.cmake
set(entries "")
foreach(file ${FILES})
  get_filename_component(base ${file} NAME)
  file(READ ${file} text)
  string(APPEND entries "    {\"${base}\", R\"~sql~(${text})~sql~\"},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"schema/Files.h\"

namespace schema {

const std::vector<File>& ${NAME}() {
  static const std::vector<File> all = {
${entries}  };
  return all;
}

}  // namespace schema
")
