#pragma once

// Ids of the tests' own resources, in a range that the program leaves free. The resource compiler
// reads this file, too, so it holds macros only.

#define TEST_DIALOG 60001
#define TEST_BITMAP 60010

#define TEST_EDIT 60101
#define TEST_CHECK 60102
#define TEST_COMBO 60103
