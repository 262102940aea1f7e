#include "Bytes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>

using RVK::CString;
using test::bytesOf;
using test::fill;
using test::kAbsent;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

namespace {

/// A path in the tests' own directory that is gone afterwards.
class TemporaryFile {
public:
    explicit TemporaryFile(const char* name) : path_(std::filesystem::path(testing::TempDir()) / name) {
        std::filesystem::remove(path_);
    }
    ~TemporaryFile() { std::filesystem::remove(path_); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    std::string path() const { return path_.string(); }
    bool exists() const { return std::filesystem::exists(path_); }
    std::string contents() const {
        std::ifstream in(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void write(std::string_view bytes) const {
        std::ofstream(path_, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

private:
    std::filesystem::path path_;
};

} // namespace

TEST(CStringPrint, WritesTheTextSoManyTimes) {
    CString string("ab%d");
    CString fresh;
    CaptureStdout();
    string >> 3;
    string >> 0;
    string >> -2;
    fresh >> 5;
    EXPECT_EQ(GetCapturedStdout(), "ab%dab%dab%d");
}

TEST(CStringPrint, EndsAtTheFirstZeroByte) {
    CString string;
    fill(string, std::string_view("a\0b", 3));
    CaptureStdout();
    string >> 2;
    EXPECT_EQ(GetCapturedStdout(), "aa");
}

TEST(CStringFile, SavesAndLoadsAnyBytes) {
    const TemporaryFile file("rvk_string_bytes");
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    CString string;
    fill(string, all);
    CString loaded("before");
    CaptureStdout();
    EXPECT_EQ(string >> file.path().c_str(), 256);
    EXPECT_EQ(loaded << file.path().c_str(), 256);
    EXPECT_EQ(GetCapturedStdout(), "");
    EXPECT_EQ(file.contents(), all);
    EXPECT_EQ(bytesOf(loaded), all);
    EXPECT_EQ(loaded.data[256], '\0');
}

TEST(CStringFile, TakesItsOwnTextAsPath) {
    const TemporaryFile file("rvk_string_self");
    file.write("contents");
    CString string(file.path().c_str());
    EXPECT_EQ(string << string.data, 8);
    EXPECT_STREQ(string.c_str(), "contents");
}

TEST(CStringFile, LoadsAFileLongerThanOneBlockAndAnEmptyOne) {
    const TemporaryFile file("rvk_string_long");
    const std::string longText(100001, 'x');
    file.write(longText);
    CString string;
    EXPECT_EQ(string << file.path().c_str(), 100001);
    EXPECT_EQ(bytesOf(string), longText);
    file.write("");
    EXPECT_EQ(string << file.path().c_str(), 0);
    EXPECT_EQ(string.data, RVK::nullText);
}

TEST(CStringFile, SaysWhenThereIsNothingToLoadAndKeepsTheText) {
    CString string("kept");
    CaptureStdout();
    EXPECT_EQ(string << "/nonexistent/file", 4);
    EXPECT_EQ(GetCapturedStdout(), "\nERROR: File '/nonexistent/file' could not be opened for loading.");
    CaptureStdout();
    EXPECT_EQ(string << kAbsent, 4);
    EXPECT_EQ(GetCapturedStdout(), "\nERROR: File '(null*)' could not be opened for loading.");
    CaptureStdout();
    EXPECT_EQ(string << testing::TempDir().c_str(), 4); // a folder opens, but can't be read
    EXPECT_EQ(GetCapturedStdout(), "\nERROR: While reading file.");
    EXPECT_STREQ(string.c_str(), "kept");
}

TEST(CStringFile, SaysWhenTheFileCannotBeWritten) {
    CString string("text");
    CaptureStdout();
    EXPECT_EQ(string >> "/nonexistent/file", 0);
    EXPECT_EQ(GetCapturedStdout(), "\nERROR: File '/nonexistent/file' could not be opened for saving.");
    CaptureStdout();
    EXPECT_EQ(string >> kAbsent, 0);
    EXPECT_EQ(GetCapturedStdout(), "\nERROR: File '(null*)' could not be opened for saving.");
    CaptureStdout();
    string >> "/dev/full";
    EXPECT_EQ(GetCapturedStdout(), "\nERROR: While writing file.");
}

TEST(CStringFile, WithNothingToWriteSaysSoAndMakesNoFile) {
    const TemporaryFile file("rvk_string_none");
    CString fresh;
    CaptureStdout();
    EXPECT_EQ(fresh >> file.path().c_str(), 0);
    EXPECT_EQ(GetCapturedStdout(), "\nError: String object is empty.");
    EXPECT_FALSE(file.exists());
}

TEST(CStringXml, IsTheWholeElement) {
    const CString string("text");
    EXPECT_STREQ(string.XML(0), "<CString encoding='UTF8'>\n\ttext\n</CString>\n");
    EXPECT_STREQ(string.XML(2), "\t\t<CString encoding='UTF8'>\n\t\t\ttext\n\t\t</CString>\n");
    EXPECT_STREQ(string.XML(-1), "<CString encoding='UTF8'>\n\ttext\n</CString>\n");
    EXPECT_EQ(RVK::CData::temp, string.XML(1));
}

TEST(CStringXml, OfNoTextOrWithoutRoomIsTheUndefinedElement) {
    EXPECT_STREQ(CString().XML(3), "<CData>\n\tundefined</CData>");
    EXPECT_STREQ(CString("a").XML(std::numeric_limits<int>::max()), "<CData>\n\tundefined</CData>");
}

TEST(CStringXml, HoldsHighBytesAndTheTextUpToAZero) {
    CString string;
    fill(string, std::string_view("\xC3\xA4\0x", 4));
    EXPECT_STREQ(string.XML(0), "<CString encoding='UTF8'>\n\t\xC3\xA4\n</CString>\n");
}
