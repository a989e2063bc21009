// Identifiers of the resources of the window tests.
#pragma once

#define IDM_TEST_FRAME 100
#define IDA_TEST_FRAME 100
#define ID_TEST_NEW 200
#define ID_TEST_TILE 7
#define ID_TEST_CLOSE 6
