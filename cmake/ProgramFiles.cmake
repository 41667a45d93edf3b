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

# The manual in each language of the program, in the folder where readers of that language look first.
function(manual locale folder)
  set(ENV{LC_ALL} ${locale})
  written(${folder}/bukorval.1 --manual)
  # The program's page names those of its commands: bukorval\-elaborate\-cards.
  string(REGEX MATCHALL "fBbukorval(\\\\-[a-z]+)+" pages "${text}")
  list(TRANSFORM pages REPLACE "\\\\" "")
  list(TRANSFORM pages REPLACE "^fBbukorval-" "")
  foreach(command ${pages})
    written(${folder}/bukorval-${command}.1 --manual ${command})
  endforeach()
  file(GLOB pages ${OUTPUT}/${folder}/bukorval*.1)
  execute_process(COMMAND gzip -9nf ${pages} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

manual(C.UTF-8 man/man1)
manual(it_IT.UTF-8 man/it/man1)
