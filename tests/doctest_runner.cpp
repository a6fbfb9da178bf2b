#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest.h>
