// Compares a text with the one kept in tests/golden.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace test {

/// Fails at the first line that differs, and where the kept file is missing. With the environment variable
/// QOR_WRITE_GOLDEN set the text is written instead and the test still fails, so that nobody forgets to
/// review it.
inline void expectGolden(const std::string& name, const std::string& actual) {
    const std::filesystem::path path = std::filesystem::path(QOR_GOLDEN_FOLDER) / name;
    if (std::getenv("QOR_WRITE_GOLDEN") != nullptr) {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << actual;
        ADD_FAILURE() << "wrote " << path << ": review it and run again without QOR_WRITE_GOLDEN";
        return;
    }
    std::ifstream file(path, std::ios::binary);
    ASSERT_TRUE(file) << "there is no " << path << "; the text is:\n" << actual;
    const std::string expected{std::istreambuf_iterator<char>(file), {}};
    if (expected == actual) {
        return;
    }
    std::size_t at = 0;
    while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) {
        ++at;
    }
    const auto lineAt = [at](const std::string& text) {
        const std::size_t start = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
        return text.substr(start, text.find('\n', at) - start);
    };
    const auto line = std::count(actual.begin(), actual.begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1;
    ADD_FAILURE() << name << ", line " << line << ":\n  kept:  " << lineAt(expected)
                  << "\n  drawn: " << lineAt(actual);
}

} // namespace test
