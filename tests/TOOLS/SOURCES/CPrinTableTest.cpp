#include "TOOLS/SOURCES/CPrinTable.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

TEST(CPrinTable, NamesEveryCode) {
    const std::map<int, std::string> controls = {
        {0, "<NUL>"},  {1, "<SOH>"},  {2, "<STX>"},  {3, "<ETX>"},  {4, "<EOT>"},  {5, "<ENQ>"},
        {6, "<ACK>"},  {7, "<BEL>"},  {8, "<BS>"},   {9, "\t"},     {10, "\n"},    {11, "<VT>"},
        {12, "<FF>"},  {13, "\r"},    {14, "<SO>"},  {15, "<SI>"},  {16, "<DLE>"}, {17, "<DC1>"},
        {18, "<DC2>"}, {19, "<DC3>"}, {20, "<DC4>"}, {21, "<NAK>"}, {22, "<SYN>"}, {23, "<ETB>"},
        {24, "<CAN>"}, {25, "<EM>"},  {26, "<SUB>"}, {27, "<ESC>"}, {28, "<FS>"},  {29, "<GS>"},
        {30, "<RS>"},  {31, "<US>"},  {32, " "},     {127, "<DEL>"}};
    const RVK::CPrinTable table;
    for (int code = 0; code < 128; ++code) {
        const auto named = controls.find(code);
        const std::string expected =
            named != controls.end() ? named->second : std::string(1, static_cast<char>(code));
        EXPECT_EQ(std::string(table.names[code]), expected) << code;
    }
}

TEST(CPrinTable, EntriesPointToTheObjectsOwnNames) {
    const RVK::CPrinTable table;
    for (int code = 0; code < 128; ++code) {
        EXPECT_EQ(table.entries[code], &table.names[code]);
    }
}
