// The generated sets of the core tests, built into these tests as well.
#include "support/Generators.cpp"
