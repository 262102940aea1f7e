// A second unit with globals of its own.
#include "TOOLS/SOURCES/Data.h"

namespace test {

const void* otherPrinTable();
const void* otherInvalid();
const void* otherEmpty();

const void* otherPrinTable() {
    return &RVK::PrinTable;
}
const void* otherInvalid() {
    return &RVK::invalid;
}
const void* otherEmpty() {
    return &RVK::empty;
}

} // namespace test
