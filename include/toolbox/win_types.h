// The Windows types and constants that appear in the library's signatures.
//
// On Windows this is <windows.h>. Elsewhere it declares the few names that the library's native
// part uses, with the values that Windows gives them, so that one application source compiles on
// both.
#pragma once

#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#else

#include <cstdint>

struct HWND__;
struct HINSTANCE__;
using HWND = HWND__*;            ///< a window; never a live one outside Windows
using HINSTANCE = HINSTANCE__*;  ///< a module that holds string resources
using UINT = unsigned int;       ///< number of a message, a command or a control
using WPARAM = std::uintptr_t;   ///< first parameter of a window message
using LPARAM = std::intptr_t;    ///< second parameter of a window message
using LRESULT = std::intptr_t;   ///< result of a window message

// Messages that the library handles.
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT WM_MOUSEMOVE = 0x0200;

// Roots of the registry and types of its values.
struct HKEY__;
using HKEY = HKEY__*;
inline HKEY__* const HKEY_CURRENT_USER = reinterpret_cast<HKEY>(0x80000001UL);
inline HKEY__* const HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(0x80000002UL);
inline constexpr unsigned long REG_SZ = 1;
inline constexpr unsigned long REG_EXPAND_SZ = 2;
inline constexpr unsigned long REG_BINARY = 3;
inline constexpr unsigned long REG_DWORD = 4;

// Access rights, sharing and disposition of APIFile.
inline constexpr unsigned long GENERIC_READ = 0x80000000UL;
inline constexpr unsigned long GENERIC_WRITE = 0x40000000UL;
inline constexpr unsigned long FILE_SHARE_READ = 1;
inline constexpr unsigned long FILE_SHARE_WRITE = 2;
inline constexpr unsigned long FILE_SHARE_DELETE = 4;
inline constexpr unsigned long CREATE_NEW = 1;
inline constexpr unsigned long CREATE_ALWAYS = 2;
inline constexpr unsigned long OPEN_EXISTING = 3;
inline constexpr unsigned long OPEN_ALWAYS = 4;
inline constexpr unsigned long TRUNCATE_EXISTING = 5;

// Flags and results of message boxes.
inline constexpr unsigned int MB_OK = 0x0;
inline constexpr unsigned int MB_OKCANCEL = 0x1;
inline constexpr unsigned int MB_YESNOCANCEL = 0x3;
inline constexpr unsigned int MB_YESNO = 0x4;
inline constexpr unsigned int MB_ICONSTOP = 0x10;
inline constexpr unsigned int MB_ICONQUESTION = 0x20;
inline constexpr unsigned int MB_ICONEXCLAMATION = 0x30;
inline constexpr unsigned int MB_ICONINFORMATION = 0x40;
inline constexpr unsigned int MB_TASKMODAL = 0x2000;
inline constexpr unsigned int MB_SETFOREGROUND = 0x10000;
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

// System error codes that the library stores and compares; failures of other systems are mapped to
// these.
inline constexpr unsigned long ERROR_SUCCESS = 0;
inline constexpr unsigned long ERROR_FILE_NOT_FOUND = 2;
inline constexpr unsigned long ERROR_PATH_NOT_FOUND = 3;
inline constexpr unsigned long ERROR_TOO_MANY_OPEN_FILES = 4;
inline constexpr unsigned long ERROR_ACCESS_DENIED = 5;
inline constexpr unsigned long ERROR_INVALID_HANDLE = 6;
inline constexpr unsigned long ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr unsigned long ERROR_INVALID_DATA = 13;
inline constexpr unsigned long ERROR_WRITE_PROTECT = 19;
inline constexpr unsigned long ERROR_WRITE_FAULT = 29;
inline constexpr unsigned long ERROR_READ_FAULT = 30;
inline constexpr unsigned long ERROR_SHARING_VIOLATION = 32;
inline constexpr unsigned long ERROR_HANDLE_EOF = 38;
inline constexpr unsigned long ERROR_NOT_SUPPORTED = 50;
inline constexpr unsigned long ERROR_FILE_EXISTS = 80;
inline constexpr unsigned long ERROR_INVALID_PARAMETER = 87;
inline constexpr unsigned long ERROR_DISK_FULL = 112;
inline constexpr unsigned long ERROR_NEGATIVE_SEEK = 131;
inline constexpr unsigned long ERROR_BAD_PATHNAME = 161;
inline constexpr unsigned long ERROR_ALREADY_EXISTS = 183;
inline constexpr unsigned long ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr unsigned long ERROR_FILE_TOO_LARGE = 223;
inline constexpr unsigned long ERROR_MORE_DATA = 234;
inline constexpr unsigned long ERROR_CANCELLED = 1223;

// File attributes.
inline constexpr unsigned long FILE_ATTRIBUTE_READONLY = 0x1;
inline constexpr unsigned long FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr unsigned long FILE_ATTRIBUTE_ARCHIVE = 0x20;
inline constexpr unsigned long FILE_ATTRIBUTE_NORMAL = 0x80;

#endif
