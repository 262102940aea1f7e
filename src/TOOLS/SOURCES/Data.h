// The tools' classes with the globals that each unit which includes this has for its own.
#pragma once

#include "TOOLS/SOURCES/CData.h"
#include "TOOLS/SOURCES/CPrinTable.h"
#include "TOOLS/SOURCES/CString.h"
#include "TOOLS/SOURCES/CStringList.h"

namespace RVK {

// Built before the program starts. `empty` holds a single blank, by design.
static CPrinTable PrinTable;
static CString invalid("null");
static CString empty(" ");

} // namespace RVK
