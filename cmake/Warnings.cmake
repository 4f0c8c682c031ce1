# Warnings are errors in our own targets; libraries' headers are taken as system headers. GCC 12 sees copies that
# overlap where an optimised std::string takes a short text; there are none, so that one warning stays off.
function(tallybook_target name)
  target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
    -Wold-style-cast -Wcast-align -Wunused -Woverloaded-virtual -Werror
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
endfunction()
