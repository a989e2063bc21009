// Numbers of the program's resources.
#pragma once

#define IDD_BEAM 100
#define IDD_LOAD 101

#define IDC_NAME 201
#define IDC_SPAN 202
#define IDC_STEEL 203
#define IDC_DATE 204
#define IDC_FORCE 205
#define IDC_FROM 206
#define IDC_TO 207

#define IDS_TITLE 2000
#define IDS_STEELS 2001
#define IDS_NAME 2002
#define IDS_SPAN 2003
#define IDS_FORCE 2004
#define IDS_PLACE 2005
#define IDS_END_BEFORE_START 2006
#define IDS_END_OFF_BEAM 2007
#define IDS_RESULT 2008
