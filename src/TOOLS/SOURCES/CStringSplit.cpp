// Cutting a text into pieces.
#include "TOOLS/SOURCES/CString.h"

#include "TOOLS/SOURCES/CStringList.h"

#include <cstring>

namespace RVK {

int CString::Split(char* separator, CStringList* list, int limit, int start) {
    static int pieces = 0;
    if (separator == nullptr || list == nullptr || !hasText()) {
        return -1;
    }
    int from = start < 0 ? 0 : start; // a negative position counts as 0, as in Find
    if (from == 0) {
        list->clear();
        pieces = 0;
    }
    /// Appends a piece; true if the limit is reached.
    const auto append = [&](int size) {
        auto* const piece = static_cast<char*>(CAlloc(static_cast<unsigned long>(Padding(size)), 1));
        if (piece != nullptr) {
            std::memcpy(piece, data + from, static_cast<std::size_t>(size));
            list->append(piece);
        }
        pieces = list->size();
        return limit >= 1 && pieces >= limit;
    };
    const int width = StrLen(separator);
    for (;;) {
        const int at = Find(separator, from);
        if (at < from) {
            if (length > from) {
                append(length - from);
            }
            return list->size();
        }
        if (at != from && append(at - from)) {
            return list->size();
        }
        from = at + width;
    }
}

} // namespace RVK
