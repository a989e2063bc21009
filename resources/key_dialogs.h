// Identifiers of the controls of the list of keys and its dialogs, for resource scripts and code.
#pragma once

#define IDC_KEY_LIST_FILTER_LABEL 1370
#define IDC_KEY_LIST_FILTER 1371
#define IDC_KEY_LIST_GROUP_LABEL 1372
#define IDC_KEY_LIST_GROUP 1373
#define IDC_KEY_LIST 1374
#define IDC_KEY_LIST_CHOSEN 1375
#define IDC_KEY_LIST_UP 1376
#define IDC_KEY_LIST_DOWN 1377
#define IDC_KEY_LIST_FORMAT 1378
#define IDC_KEY_LIST_DESCRIPTION 1379
#define IDC_KEY_LIST_RESET 1380
#define IDC_KEY_LIST_COPY 1381
#define IDC_KEY_LIST_INSERT 1382
#define IDC_KEY_DESCRIPTION 1383
