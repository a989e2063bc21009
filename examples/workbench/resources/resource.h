// Identifiers of the workbench's resources and commands, for the resource script and for code.
//
// Menus exist in French under the number named here and in English under the next one: see
// inLanguage(). Dialogs have one number for both languages, accelerators are the same in both.
#pragma once

#define IDM_FRAME 100
#define IDA_FRAME 102
#define IDI_FRAME 104
#define IDR_SECTIONS 106
#define IDD_PALETTE 200
#define IDD_BEAM 201
#define IDD_MESSAGES 204
#define IDD_ABOUT 205

// Commands of the menus. Those of the frame itself (1 to 10) are the library's. The text with a
// command's number says what it does, in the status bar and as the tip of its button.
#define CMD_EXIT 1
#define CMD_CLOSE_WINDOW 6
#define CMD_TILE_VERTICALLY 7
#define CMD_CASCADE 8
#define CMD_ARRANGE_ICONS 9
#define CMD_TILE_HORIZONTALLY 10

#define CMD_NEW 4101
#define CMD_OPEN 4102
#define CMD_SAVE 4103
#define CMD_SAVE_AS 4104
#define CMD_CLOSE 4105
#define CMD_SAMPLE 4106
#define CMD_EXPORT 4107
#define CMD_RECENT 4151  // to 4155

#define CMD_EDIT 4201
#define CMD_DELETE 4202
#define CMD_COPY 4203
#define CMD_UNDO 4204
#define CMD_REDO 4205
#define CMD_COPY_DRAWING 4206

#define CMD_TABLE 4301
#define CMD_DRAWING 4302
#define CMD_KEY_LIST 4303
#define CMD_PALETTE 4304
#define CMD_MESSAGES 4305
#define CMD_ZOOM_ALL 4306
#define CMD_FRENCH 4311
#define CMD_ENGLISH 4312

#define CMD_RECOMPUTE 4401
#define CMD_FORMAT 4402

// What the mouse does in a drawing: commands of one context, buttons of the palette.
#define CMD_SELECT_MODE 4501
#define CMD_BEAM_MODE 4502
#define CMD_POINT_LOAD_MODE 4503
#define CMD_UNIFORM_LOAD_MODE 4504
#define CMD_LABEL_MODE 4505
#define CMD_ARRANGE_LABELS 4506

#define CMD_ABOUT 4601
#define CMD_OPEN_LOG 4602

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
#define IDC_BEAM_LOAD_GROUP 2011
#define IDC_LOAD_POSITION_LABEL 2012
#define IDC_LOAD_FORCE_LABEL 2013

// Controls of the messages and about dialogs.
#define IDC_MESSAGES 2301
#define IDC_CLEAR 2302
#define IDC_ABOUT_TEXT 2303
