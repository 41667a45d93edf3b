# Has the program write its manual pages and completion scripts: cmake -DPROGRAM=… -DOUTPUT=…/share -P ProgramFiles.cmake
cmake_minimum_required(VERSION 3.25)
set(ENV{LC_ALL} C.UTF-8)

function(written file)
  execute_process(COMMAND ${PROGRAM} ${ARGN} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  file(WRITE ${OUTPUT}/${file} "${text}")
  set(text "${text}" PARENT_SCOPE)
endfunction()

written(bash-completion/completions/bukorval completion bash)
written(zsh/vendor-completions/_bukorval completion zsh)
written(fish/vendor_completions.d/bukorval.fish completion fish)
written(man/man1/bukorval.1 --manual)
# The program's page names those of its commands: bukorval\-elaborate\-cards.
string(REGEX MATCHALL "fBbukorval(\\\\-[a-z]+)+" pages "${text}")
list(TRANSFORM pages REPLACE "\\\\" "")
list(TRANSFORM pages REPLACE "^fBbukorval-" "")
foreach(command ${pages})
  written(man/man1/bukorval-${command}.1 --manual ${command})
endforeach()
file(GLOB pages ${OUTPUT}/man/man1/bukorval*.1)
execute_process(COMMAND gzip -9nf ${pages} COMMAND_ERROR_IS_FATAL ANY)
