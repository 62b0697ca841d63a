include(GoogleTest)

# Adds the tests of a program. Under a sanitizer starting a process takes longer than most tests,
# so that all of a program are run, and counted, as one.
function(scrivo_add_tests program)
  if(SCRIVO_TEST_EACH)
    gtest_discover_tests(${program})
  else()
    add_test(NAME ${program} COMMAND ${program} --gtest_brief=1)
  endif()
endfunction()
