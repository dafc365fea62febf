// Resources of the tests' own, clear of the program's ids. Read by the resource compiler, too.
#pragma once

#define TEST_DIALOG 60001
#define TEST_BITMAP 60010

#define TEST_EDIT 60101
#define TEST_CHECK 60102
#define TEST_COMBO 60103
