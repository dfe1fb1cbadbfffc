# The windows' tests. They bring a main of their own, and need no display.
find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
tolva_tests(desktop STANDS_ON desktop)
target_link_libraries(tests_desktop PRIVATE Qt6::Test)
# What is laid out must fit at other scales too.
gtest_discover_tests(tests_desktop DISCOVERY_MODE PRE_TEST TEST_FILTER "*Forms*" TEST_PREFIX "AtScale1.5."
  PROPERTIES TIMEOUT 300 ENVIRONMENT QT_SCALE_FACTOR=1.5)
