# Builds everything with the sanitizers that VERDOLIN_SANITIZERS lists; any finding ends the program. Only as
# much is kept for the debugger as it takes to name the lines of a finding.
if(VERDOLIN_SANITIZERS)
  list(JOIN VERDOLIN_SANITIZERS "," verdolin_sanitizer_list)
  add_compile_options(-fsanitize=${verdolin_sanitizer_list} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer -O1 -g1)
  add_link_options(-fsanitize=${verdolin_sanitizer_list})
endif()
