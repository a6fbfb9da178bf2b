# On Windows the registry entries of the library and of the simulated host are the same for every process, and one window
# has the focus: a test of these has a Wine to itself. Tests wait more than they work, so there are several Wines
# (tests/wines.json); ctest gives each test the one that is free, tools/wine-run reads which. The library is registered in
# all of them before.
#
#   vellumo_needs_wine(TEST...)
file(READ ${PROJECT_SOURCE_DIR}/tests/wines.json wines)
string(JSON count LENGTH ${wines} local 0 wine)
math(EXPR last "${count} - 1")
foreach(number RANGE ${last})
  string(JSON wine GET ${wines} local 0 wine ${number} id)
  add_test(NAME register.${wine} COMMAND ${PROJECT_SOURCE_DIR}/tools/register ${VELLUMO_TARGET} ${PROJECT_BINARY_DIR})
  set_tests_properties(register.${wine} PROPERTIES ENVIRONMENT VELLUMO_WINE=${wine} FIXTURES_SETUP registered COST 1000)
endforeach()

function(vellumo_needs_wine)
  set_tests_properties(${ARGN} PROPERTIES RESOURCE_GROUPS wine:1 FIXTURES_REQUIRED registered)
endfunction()
