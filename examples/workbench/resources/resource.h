// Identifiers of the workbench's resources and commands, for the resource script and for code.
//
// Menus and dialogs exist in French under the number named here and in English under the next one:
// see inLanguage(). The accelerators are the same in both.
#pragma once

#define IDM_FRAME 100
#define IDA_FRAME 102
#define IDI_FRAME 104
#define IDR_SECTIONS 106
#define IDD_PALETTE 200
#define IDD_BEAM 202
#define IDD_LABEL 204
#define IDD_KEY_LIST 206
#define IDD_MESSAGES 208
#define IDD_ABOUT 210

// Commands of the menus. Those of the frame itself (1 to 10) are the library's.
#define CMD_EXIT 1
#define CMD_CLOSE_WINDOW 6
#define CMD_TILE_VERTICALLY 7
#define CMD_CASCADE 8
#define CMD_ARRANGE_ICONS 9
#define CMD_TILE_HORIZONTALLY 10

#define CMD_NEW 1101
#define CMD_OPEN 1102
#define CMD_SAVE 1103
#define CMD_SAVE_AS 1104
#define CMD_CLOSE 1105
#define CMD_SAMPLE 1106
#define CMD_RECENT 1151  // to 1155

#define CMD_EDIT 1201
#define CMD_DELETE 1202
#define CMD_COPY 1203

#define CMD_TABLE 1301
#define CMD_DRAWING 1302
#define CMD_KEY_LIST 1303
#define CMD_PALETTE 1304
#define CMD_MESSAGES 1305
#define CMD_ZOOM_ALL 1306
#define CMD_FRENCH 1311
#define CMD_ENGLISH 1312

#define CMD_RECOMPUTE 1401
#define CMD_FORMAT 1402

// What the mouse does in a drawing: commands of one context, buttons of the palette.
#define CMD_SELECT_MODE 1501
#define CMD_BEAM_MODE 1502
#define CMD_POINT_LOAD_MODE 1503
#define CMD_UNIFORM_LOAD_MODE 1504
#define CMD_LABEL_MODE 1505

#define CMD_ABOUT 1601
#define CMD_OPEN_LOG 1602

// Windows in the list of documents.
#define CMD_FIRST_CHILD 5000

// Controls of the beam dialog.
#define IDC_BEAM_NAME 2001
#define IDC_BEAM_SECTION 2002
#define IDC_BEAM_SPAN 2003
#define IDC_BEAM_UNIFORM 2004
#define IDC_BEAM_LOADS 2005
#define IDC_LOAD_POSITION 2006
#define IDC_LOAD_FORCE 2007
#define IDC_LOAD_ADD 2008
#define IDC_LOAD_REMOVE 2009
#define IDC_LOAD_CHANGE 2010

// Controls of the label dialog.
#define IDC_LABEL_TEXT 2101
#define IDC_LABEL_PREVIEW 2102
#define IDC_LABEL_PROBLEM 2103
#define IDC_LABEL_KEY 2104
#define IDC_LABEL_INSERT 2105

// Controls of the key list.
#define IDC_KEYS 2201
#define IDC_KEY_SHOWN 2202
#define IDC_KEY_FORMAT 2203
#define IDC_KEY_COPY 2204
#define IDC_KEY_RESET 2205
#define IDC_KEY_UP 2206
#define IDC_KEY_DOWN 2207

// Controls of the messages and about dialogs.
#define IDC_MESSAGES 2301
#define IDC_CLEAR 2302
#define IDC_ABOUT_TEXT 2303
