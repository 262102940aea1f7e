#include "platform/files/Files.h"
#include "support/CapturedLog.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <random>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace platform;

namespace {

class Defaults : public testing::Test {
protected:
    std::string fileOf(const std::string& domain) const {
        return config_.file("qor-limiter/" + domain + ".plist");
    }
    static PropertyListDictionary contentOf(const std::string& path) {
        NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0;
        const auto list =
            PropertyListSerialization::propertyListWithData(dataFromText(test::readFile(path)), 0, format);
        return list && list.value().asDictionary() != nullptr ? *list.value().asDictionary()
                                                              : PropertyListDictionary{};
    }

    test::TemporaryDirectory config_;
    test::ScopedVariable variable_{"XDG_CONFIG_HOME", config_.path().string()};
    Ref<NSUserDefaults> standard_ = NSUserDefaults::standardUserDefaults();
    Ref<NSUserDefaults> suite_ = NSUserDefaults::initWithSuiteName("group.test");
};

} // namespace

TEST_F(Defaults, ValuesOfEveryTypeReadBack) {
    standard_->setValue("text", "string");
    standard_->setInteger(-5, "integer");
    standard_->setFloat(0.1F, "float");
    standard_->setBool(true, "bool");
    standard_->setURL(URL::fileURLWithPath("/tmp/a b"), "file");
    standard_->setURL(URL::initWithString("https://example.org/x"), "web");
    EXPECT_EQ(standard_->stringForKey("string"), "text");
    EXPECT_EQ(standard_->integerForKey("integer"), -5);
    EXPECT_EQ(standard_->floatForKey("float"), 0.1F);
    EXPECT_TRUE(standard_->boolForKey("bool"));
    EXPECT_EQ(standard_->URLForKey("file")->path(), "/tmp/a b");
    EXPECT_EQ(standard_->URLForKey("web")->absoluteString(), "https://example.org/x");
    EXPECT_EQ(contentOf(fileOf("org.qrvk.qor-limiter")).size(), 6U);
}

TEST_F(Defaults, MissingKeysGiveNothingOrZero) {
    EXPECT_EQ(standard_->objectForKey("x"), std::nullopt);
    EXPECT_EQ(standard_->stringForKey("x"), std::nullopt);
    EXPECT_EQ(standard_->integerForKey("x"), 0);
    EXPECT_EQ(standard_->floatForKey("x"), 0.0F);
    EXPECT_FALSE(standard_->boolForKey("x"));
    EXPECT_EQ(standard_->URLForKey("x"), std::nullopt);
}

TEST_F(Defaults, TypedReadsConvert) {
    standard_->setObject("42", "number text");
    standard_->setObject("YES", "yes");
    standard_->setObject(2.75, "real");
    standard_->setObject(1e30, "huge");
    standard_->setObject(true, "true");
    standard_->setObject(PropertyListArray{}, "array");
    EXPECT_EQ(standard_->integerForKey("number text"), 42);
    EXPECT_TRUE(standard_->boolForKey("yes"));
    EXPECT_EQ(standard_->integerForKey("real"), 2);
    EXPECT_EQ(standard_->stringForKey("real"), "2.75");
    EXPECT_EQ(standard_->integerForKey("huge"), INT64_MAX);
    EXPECT_EQ(standard_->integerForKey("true"), 1);
    EXPECT_EQ(standard_->stringForKey("array"), std::nullopt);
    EXPECT_EQ(standard_->integerForKey("array"), 0);
}

TEST_F(Defaults, AnAbsentValueRemovesTheKey) {
    standard_->setInteger(1, "a");
    standard_->setObject(std::nullopt, "a");
    standard_->setInteger(2, "b");
    standard_->removeObjectForKey("b");
    EXPECT_EQ(standard_->objectForKey("a"), std::nullopt);
    EXPECT_TRUE(standard_->dictionaryRepresentation().empty());
}

TEST_F(Defaults, SuitesAreReadBehindTheOwnDomainAndNeverWritten) {
    suite_->setInteger(1, "only suite");
    suite_->setInteger(2, "both");
    EXPECT_EQ(standard_->objectForKey("only suite"), std::nullopt);
    standard_->addSuiteNamed("group.test");
    standard_->setInteger(3, "both");
    EXPECT_EQ(standard_->integerForKey("only suite"), 1);
    EXPECT_EQ(standard_->integerForKey("both"), 3);
    EXPECT_EQ(suite_->integerForKey("both"), 2);
    EXPECT_EQ(describe(standard_->dictionaryRepresentation()), "{both = 3, only suite = 1}");
    standard_->removeSuiteNamed("group.test");
    EXPECT_EQ(standard_->objectForKey("only suite"), std::nullopt);
}

TEST_F(Defaults, SuiteNamesThatAreNoneGiveNoDefaults) {
    EXPECT_EQ(NSUserDefaults::initWithSuiteName(""), nullptr);
    EXPECT_EQ(NSUserDefaults::initWithSuiteName("a/b"), nullptr);
    EXPECT_EQ(NSUserDefaults::initWithSuiteName(Bundle::main().bundleIdentifier()), nullptr);
}

TEST_F(Defaults, ADamagedFileIsSetAsideWithAMessage) {
    test::writeFile(fileOf("group.test"), "<plist><dict><key>a</key>");
    const test::CapturedLog log;
    EXPECT_EQ(suite_->integerForKey("a"), 0);
    suite_->setInteger(1, "b");
    EXPECT_EQ(suite_->integerForKey("b"), 1);
    EXPECT_EQ(test::readFile(fileOf("group.test") + ".damaged-1"), "<plist><dict><key>a</key>");
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.lines()[0], "NSUserDefaults: WARNING: The file '" + fileOf("group.test") +
                                  "' is damaged and was set aside as '" + fileOf("group.test") +
                                  ".damaged-1'. Starting without its values.");
}

TEST_F(Defaults, EachDamagedFileGetsANameOfItsOwn) {
    const test::CapturedLog log;
    for (const char* content : {"first", "second", "<plist><array/></plist>"}) {
        test::writeFile(fileOf("group.test"), content);
        suite_->setInteger(1, "a"); // a write meets it as well as a read
    }
    EXPECT_EQ(test::readFile(fileOf("group.test") + ".damaged-1"), "first");
    EXPECT_EQ(test::readFile(fileOf("group.test") + ".damaged-2"), "second");
    EXPECT_EQ(test::readFile(fileOf("group.test") + ".damaged-3"), "<plist><array/></plist>");
}

TEST_F(Defaults, WhatAnotherProcessWroteIsSeenAtOnce) {
    suite_->setInteger(1, "mine");
    const pid_t child = ::fork();
    if (child == 0) {
        NSUserDefaults::initWithSuiteName("group.test")->setInteger(2, "theirs");
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(suite_->integerForKey("theirs"), 2);
    EXPECT_EQ(suite_->integerForKey("mine"), 1);
}

TEST_F(Defaults, AValueThatCannotBeWrittenIsKeptInMemoryAndSaid) {
    test::writeFile(config_.file("qor-limiter"), "a file where the directory belongs");
    const test::CapturedLog log;
    suite_->setInteger(1, "a");
    EXPECT_EQ(suite_->integerForKey("a"), 1);
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_THAT(log.lines()[0],
                testing::StartsWith("NSUserDefaults: WARNING: The values are kept in memory only"));
    std::filesystem::remove(config_.file("qor-limiter"));
    suite_->setInteger(2, "b");
    EXPECT_EQ(describe(contentOf(fileOf("group.test"))), "{a = 1, b = 2}");
}

TEST_F(Defaults, ThreadsLoseNoKeys) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([t] {
            const auto suite = NSUserDefaults::initWithSuiteName("group.test");
            for (int i = 0; i < 50; ++i) {
                suite->setInteger(i, std::to_string(t) + "." + std::to_string(i));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(contentOf(fileOf("group.test")).size(), 200U);
}

TEST_F(Defaults, TwoProcessesThatWriteAThousandKeysEachLoseNone) {
    constexpr int kKeys = 1000;
    std::vector<pid_t> children;
    for (int process = 0; process < 2; ++process) {
        const pid_t child = ::fork();
        if (child == 0) {
            const auto suite = NSUserDefaults::initWithSuiteName("group.test");
            for (int i = 0; i < kKeys; ++i) {
                suite->setInteger(i, std::to_string(process) + "." + std::to_string(i));
            }
            ::_exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const PropertyListDictionary content = contentOf(fileOf("group.test"));
    EXPECT_EQ(content.size(), 2U * kKeys);
    for (int i = 0; i < kKeys; ++i) {
        for (const char* process : {"0.", "1."}) {
            const PropertyList* value = content.find(process + std::to_string(i));
            ASSERT_NE(value, nullptr) << process << i;
            ASSERT_EQ(value->asInteger(), i);
        }
    }
}

TEST_F(Defaults, AKilledWriterLeavesAWholeFileAndTheLockFree) {
    constexpr int kKills = 1000;
    std::minstd_rand random(3);
    const test::CapturedLog log;
    suite_->setInteger(-1, "n");
    for (int i = 0; i < kKills; ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            const auto suite = NSUserDefaults::initWithSuiteName("group.test");
            for (int n = 0;; ++n) {
                suite->setInteger(n, "n");
                suite->setObject(std::string(static_cast<std::size_t>(n % 50), 'x'), "s");
            }
        }
        ::usleep(random() % 3000);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        ASSERT_NE(contentOf(fileOf("group.test")).find("n"), nullptr);
    }
    suite_->setInteger(7, "after");
    EXPECT_EQ(suite_->integerForKey("after"), 7);
    EXPECT_TRUE(log.lines().empty()) << log.lines()[0];
}
