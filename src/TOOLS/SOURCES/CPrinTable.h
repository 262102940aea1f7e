// A printable name for each ASCII code.
#pragma once

namespace RVK {

/// 128 entries that point into a table of names: a printable character by itself, 9, 10, 13 and 32 as
/// themselves, the other control codes by their names in angle brackets ("<NUL>").
class CPrinTable {
public:
    CPrinTable();
    CPrinTable(const CPrinTable&) = delete; // the entries point into the object
    CPrinTable& operator=(const CPrinTable&) = delete;

    const char** entries[128];
    const char* names[128];
};

} // namespace RVK
