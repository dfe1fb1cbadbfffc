# The windows' tests. They bring a main of their own, and most need no display.
find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
tolva_tests(desktop STANDS_ON desktop)
# One at a time: there is one screen, and one window on it has the focus.
tolva_tests(display STANDS_ON desktop PROPERTIES RESOURCE_LOCK display)
# What leaves the program on paper.
tolva_tests(paper STANDS_ON desktop)
foreach(folder IN ITEMS desktop display paper)
  target_link_libraries(tests_${folder} PRIVATE Qt6::Test)
endforeach()
# What is laid out must fit at other scales too.
gtest_discover_tests(tests_desktop DISCOVERY_MODE PRE_TEST TEST_FILTER "*Forms*-*FitASmallScreen*"
  TEST_PREFIX "AtScale1.5." PROPERTIES TIMEOUT 300 ENVIRONMENT QT_SCALE_FACTOR=1.5)
