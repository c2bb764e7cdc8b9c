# Copies data/ (stattab, language, help, dat) into the program folder; output/ is made empty.
foreach(sub stattab language help dat)
  if(EXISTS ${SRC}/${sub})
    file(COPY ${SRC}/${sub} DESTINATION ${DST} PATTERN "README.md" EXCLUDE)
  endif()
endforeach()
file(MAKE_DIRECTORY ${DST}/output)
