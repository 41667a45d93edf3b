# Writes the files of a folder into a C++ source, each as its bytes: cmake -DOUTPUT=… -DFOLDER=… -P Embed.cmake
file(GLOB_RECURSE files RELATIVE ${FOLDER} ${FOLDER}/*)
list(SORT files)
set(texts "")
set(entries "")
set(number 0)
foreach(name ${files})
  file(READ ${FOLDER}/${name} bytes HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" bytes "${bytes}")
  # One literal of a line's length after another: the compiler joins them.
  string(REGEX REPLACE "(................................................................)" "\\1\"\n\"" bytes "${bytes}")
  file(SIZE ${FOLDER}/${name} size)
  string(APPEND texts "constexpr std::string_view k${number}(\n\"${bytes}\", ${size});\n")
  string(APPEND entries "    {\"${name}\", k${number}},\n")
  math(EXPR number "${number} + 1")
endforeach()
file(WRITE ${OUTPUT} "#include \"host/server/Assets.h\"\n\nnamespace bukorval::host::server {\nnamespace {\n\n${texts}
constexpr Asset kAll[] = {\n${entries}    {}};\n\n}  // namespace\n
std::span<const Asset> assets() { return std::span(kAll).first(${number}); }\n\n}  // namespace bukorval::host::server\n")
