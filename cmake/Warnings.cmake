# Warnings are errors in our own targets; libraries' headers are taken as system headers.
function(tallybook_target name)
  target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
    -Wold-style-cast -Wcast-align -Wunused -Woverloaded-virtual -Werror)
endfunction()
