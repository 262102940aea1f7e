#include "hosts/shared/PresetStore.h"

#include "hosts/shared/StateTestSupport.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace qor;
using namespace qor::host;
using testing::HasSubstr;

class PresetStore : public test::StateHost {
protected:
    void addFactory(const std::string& name) {
        ParameterValues values = defaultParameterValues();
        values[kLimiterTrim] = 0.25F;
        test::writeFile(resources_.file("QOR Limiter Folder/Library/Factory Presets/" + name),
                        textView(stateBytes(values, name).value()));
    }
    static std::string namesOf(const std::vector<PresetEntry>& entries) {
        std::string names;
        for (const PresetEntry& entry : entries) {
            names += entry.name + (entry.isFactory ? " F;" : " U;");
        }
        return names;
    }

    test::TemporaryDirectory data_;
    test::TemporaryDirectory resources_;
    test::ScopedVariable dataVariable_{"XDG_DATA_HOME", data_.path().string()};
    test::ScopedVariable resourcesVariable_{Bundle::main().overrideVariable().c_str(),
                                            resources_.path().string()};
};

} // namespace

TEST_F(PresetStore, ListsFactoryThenUserPresetsByName) {
    EXPECT_EQ(namesOf(listPresets()), "");
    addFactory("beta.plist");
    addFactory("Alpha.plist");
    addFactory("notes.txt");
    addFactory("Loud.PLIST");
    ASSERT_TRUE(savePreset("mine", defaultParameterValues()));
    ASSERT_TRUE(savePreset("Also mine", defaultParameterValues()));
    EXPECT_EQ(namesOf(listPresets()), "Alpha F;beta F;Also mine U;mine U;");
}

TEST_F(PresetStore, WithoutResourcesThereAreOnlyUserPresets) {
    const test::ScopedVariable nowhere(Bundle::main().overrideVariable().c_str(), "/no/such/directory");
    ASSERT_TRUE(savePreset("mine", defaultParameterValues()));
    EXPECT_EQ(namesOf(listPresets()), "mine U;");
}

TEST_F(PresetStore, ASavedPresetLoadsWithAllTwelveValues) {
    std::mt19937 random(2);
    const ParameterValues values = test::randomValues(random);
    const auto saved = savePreset("Fl\xC3\xBCstern & <Drums> 1.5", values);
    ASSERT_TRUE(saved) << saved.error().localizedDescription();
    ASSERT_TRUE(loadPreset(*host_, saved.value()));
    EXPECT_EQ(parameterValues(*host_), values);
    EXPECT_EQ(readPreset(saved.value()).value().name, "Fl\xC3\xBCstern & <Drums> 1.5");
}

TEST_F(PresetStore, AFactoryPresetLoads) {
    addFactory("Warm.plist");
    ASSERT_TRUE(loadPreset(*host_, findPreset("Warm").value()));
    EXPECT_EQ(host_->parameter(kLimiterTrim), 0.25F);
}

TEST_F(PresetStore, FindsByNameByCaseAndByFile) {
    addFactory("Warm.plist");
    ASSERT_TRUE(savePreset("warm", defaultParameterValues()));
    EXPECT_FALSE(findPreset("warm").value().isFactory);
    EXPECT_TRUE(findPreset("Warm").value().isFactory);
    EXPECT_FALSE(findPreset("WARM").value().isFactory) << "the user's own comes first";
    EXPECT_EQ(findPreset("./a/b.plist").value().file.path(), "./a/b.plist");
    EXPECT_EQ(findPreset("b.PLIST").value().name, "b");
    const auto missing = findPreset("war");
    ASSERT_FALSE(missing);
    EXPECT_THAT(missing.error().localizedDescription(),
                HasSubstr("no preset 'war'. Did you mean 'warm', 'Warm'?"));
}

TEST_F(PresetStore, NamesThatNoFileCanHaveAreRefused) {
    for (const std::string& name :
         {std::string(), std::string("  "), std::string("a/b"), std::string(".hidden"), std::string("a\nb"),
          std::string(" a"), std::string("a "), std::string("\xFF"), std::string("a\0b", 3),
          std::string(101, 'x')}) {
        const auto saved = savePreset(name, defaultParameterValues());
        ASSERT_FALSE(saved) << name;
        EXPECT_THAT(saved.error().localizedDescription(), HasSubstr("can't be a preset's name"));
    }
    EXPECT_TRUE(savePreset(std::string(100, 'x'), defaultParameterValues()));
    EXPECT_EQ(listPresets().size(), 1U);
}

TEST_F(PresetStore, ADamagedPresetIsRefusedByFileAndPlaceAndTheUnitKeepsItsValues) {
    const std::string path = data_.file("qor-limiter/presets/bad.plist");
    const std::string good(textView(stateBytes(defaultParameterValues(), "bad").value()));
    ASSERT_TRUE(host_->setParameter(kLimiterTrim, 0.75F));
    const auto refusalOf = [&](const std::string& content) {
        test::writeFile(path, content);
        const auto loaded = loadPreset(*host_, findPreset("bad").value());
        EXPECT_FALSE(loaded);
        EXPECT_EQ(host_->parameter(kLimiterTrim), 0.75F);
        return loaded ? std::string("accepted") : loaded.error().localizedDescription();
    };
    std::string wrong = good;
    wrong.replace(wrong.find("<integer>4</integer>"), 20, "<string>4</string>");
    EXPECT_EQ(refusalOf(wrong),
              "The preset file '" + path +
                  "' is refused. group 04 / param / address: found a value of kind string, wanted "
                  "the address of a parameter, an integer from 0 to 11. Correct the place or save "
                  "the preset again.");
    EXPECT_THAT(refusalOf(good.substr(0, 900)), HasSubstr("line "));
    EXPECT_THAT(refusalOf(std::string((1U << 20U) + 1, 'x')), HasSubstr("the limit is 1048576"));
    EXPECT_THAT(refusalOf(""), HasSubstr("ends too early"));
}

TEST_F(PresetStore, WhatIsNoReadableFileIsRefused) {
    const auto refusalOf = [](const std::string& path) {
        const auto read = readPresetFile(URL::fileURLWithPath(path), Completeness::someParameters);
        return read ? std::string("accepted") : read.error().localizedDescription();
    };
    EXPECT_THAT(refusalOf("/no/such/file.plist"), HasSubstr("does not exist"));
    EXPECT_THAT(refusalOf("/dev/zero"), HasSubstr("is not a file"));
    EXPECT_THAT(refusalOf(data_.path().string()), HasSubstr("is not a file"));
    const std::string pipe = data_.file("pipe.plist");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_THAT(refusalOf(pipe), HasSubstr("is not a file"));
}

TEST_F(PresetStore, DeletesUserPresetsOnly) {
    addFactory("Warm.plist");
    ASSERT_TRUE(savePreset("mine", defaultParameterValues()));
    EXPECT_FALSE(deletePreset(findPreset("Warm").value()));
    const PresetEntry mine = findUserPreset("mine").value();
    EXPECT_TRUE(deletePreset(mine));
    const auto again = deletePreset(mine);
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error().localizedDescription(),
              "The preset file '" + mine.file.path() + "' can't be deleted: it does not exist any more.");
    EXPECT_EQ(namesOf(listPresets()), "Warm F;");
}

TEST_F(PresetStore, AFileOutsideTheUsersDirectoryIsNeverDeleted) {
    addFactory("Warm.plist");
    const std::string factory = resources_.file("QOR Limiter Folder/Library/Factory Presets/Warm.plist");
    const auto refused = deletePreset(findPreset(factory).value());
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().localizedDescription(), "'Warm' is no preset of your own and stays.");
    EXPECT_TRUE(std::filesystem::exists(factory));
}

TEST_F(PresetStore, OnlyAnOwnPresetOfExactlyTheNameIsFoundAsOnesOwn) {
    addFactory("Warm.plist");
    ASSERT_TRUE(savePreset("mine", defaultParameterValues()));
    ASSERT_TRUE(savePreset("Warmer", defaultParameterValues()));
    EXPECT_EQ(findUserPreset("mine").value().name, "mine");
    EXPECT_EQ(findUserPreset("Warm").error().localizedDescription(), "'Warm' is a factory preset and stays.");
    EXPECT_EQ(findUserPreset("Mine").error().localizedDescription(),
              "You have no preset 'Mine' of your own. 'qor-limiter presets' lists them; large and small "
              "letters count.");
    ASSERT_TRUE(savePreset("Warm", defaultParameterValues()));
    EXPECT_FALSE(findUserPreset("Warm").value().isFactory) << "an own one of a factory preset's name";
}

TEST_F(PresetStore, AFailedSaveNamesTheFileAndTheRemedy) {
    test::writeFile(data_.file("qor-limiter"), "a file in the folder's place");
    const auto saved = savePreset("mine", defaultParameterValues());
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().localizedDescription(),
              "The directory can't be made: '" + data_.file("qor-limiter/presets") +
                  "': Not a directory. Check that you may write there and that the disk has room.");
}

TEST_F(PresetStore, AWriterKilledInTheMiddleLeavesTheOldOrTheNewPreset) {
    constexpr int kKills = 1000;
    std::minstd_rand random(4);
    ParameterValues values = defaultParameterValues();
    const PresetEntry entry = savePreset("mine", values).value();
    int sawNew = 0;
    for (int i = 1; i <= kKills; ++i) {
        values[kLimiterTrim] = static_cast<float>(i) / 1024.0F;
        const pid_t child = ::fork();
        if (child == 0) {
            while (true) {
                (void)savePreset("mine", values).ok();
            }
        }
        ::usleep(random() % 2000);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const auto read = readPreset(entry, Completeness::allParameters);
        ASSERT_TRUE(read) << read.error().localizedDescription();
        sawNew += read.value().values.at(kLimiterTrim) == values[kLimiterTrim] ? 1 : 0;
    }
    EXPECT_GT(sawNew, kKills / 20) << "the writer was killed before it could write";
    ASSERT_TRUE(savePreset("mine", values));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(data_.file("qor-limiter/presets")), {}), 1)
        << "nothing is left of the killed writers";
}
