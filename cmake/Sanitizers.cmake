if(TALLYBOOK_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# For what shows and does not compute: the optimiser would take a third of its compile time, and the tests do not wait
# for it. The core keeps its optimisation, since tests send the largest tables through it.
function(tallybook_compile_quickly name)
  if(TALLYBOOK_SANITIZE AND NOT TALLYBOOK_FUZZ)
    target_compile_options(${name} PRIVATE -O0)
  endif()
endfunction()
