# Writes the statement files into a C++ source, so that programs carry them: cmake -DOUTPUT=… -DFILES=… -P Embed.cmake
set(entries "")
foreach(file ${FILES})
  get_filename_component(name ${file} NAME)
  file(READ ${file} text)
  string(APPEND entries "    {\"${name}\", R\"~sql~(${text})~sql~\"},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"schema/Files.h\"

namespace schema {

const std::vector<File>& files() {
  static const std::vector<File> all = {
${entries}  };
  return all;
}

}  // namespace schema
")
