#include "TOOLS/SOURCES/CPrinTable.h"

#include <array>
#include <cstddef>

namespace RVK {

namespace {

constexpr std::array<const char*, 33> kControlNames = {
    "<NUL>", "<SOH>", "<STX>", "<ETX>", "<EOT>", "<ENQ>", "<ACK>", "<BEL>", "<BS>",  "\t",    "\n",
    "<VT>",  "<FF>",  "\r",    "<SO>",  "<SI>",  "<DLE>", "<DC1>", "<DC2>", "<DC3>", "<DC4>", "<NAK>",
    "<SYN>", "<ETB>", "<CAN>", "<EM>",  "<SUB>", "<ESC>", "<FS>",  "<GS>",  "<RS>",  "<US>",  " "};

/// Each code as a text of one character.
constexpr std::array<std::array<char, 2>, 128> kCharacters = [] {
    std::array<std::array<char, 2>, 128> texts{};
    for (std::size_t code = 0; code < texts.size(); ++code) {
        texts[code][0] = static_cast<char>(code);
    }
    return texts;
}();

} // namespace

CPrinTable::CPrinTable() {
    for (std::size_t code = 0; code < 128; ++code) {
        if (code < kControlNames.size()) {
            names[code] = kControlNames[code];
        } else {
            names[code] = code == 127 ? "<DEL>" : kCharacters[code].data();
        }
        entries[code] = &names[code];
    }
}

} // namespace RVK
