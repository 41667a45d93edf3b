# Writes the page's style and script into a C++ source, with the hashes that let them run:
# cmake -DOUTPUT=… -DFOLDER=… -P Embed.cmake
set(text "#include \"picture/Assets.h\"\n\nnamespace bukorval::picture {\n\n")
foreach(name css js)
  file(READ ${FOLDER}/page.${name} content)
  file(SHA256 ${FOLDER}/page.${name} hash)
  string(APPEND text "const Asset k_${name}{R\"~~(${content})~~\", \"${hash}\"};\n")
endforeach()
string(REPLACE "k_css" "kStyle" text "${text}")
string(REPLACE "k_js" "kScript" text "${text}")
file(WRITE ${OUTPUT} "${text}\n}  // namespace bukorval::picture\n")
