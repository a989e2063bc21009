// Declaring user-defined keys and giving them values.
#pragma once

#include "toolbox/keys.h"

/// How a key begins; what the user changed comes later.
struct DeclaredKey {
    const char* key;
    RWCString header;
    const char* units;
    unsigned short description;  ///< number of a text
};

void declareKey(UDManager& keys, UINT id, const DeclaredKey& key, const FormatType& format);

/// A number at the right of its column; without decimals one of whole numbers.
void declareNumber(UDManager& keys, UINT id, const DeclaredKey& key, int width, int precision);

/// Answers UDManager::getKeyValue for a key that declareNumber declared.
int setNumber(FormatedValue* value, double number);
