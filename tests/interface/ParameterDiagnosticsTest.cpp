#include "interface/ParameterDiagnostics.h"

#include "EditorFixture.h"

#include <array>

namespace {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test
using Peer = AudioUnitViewControllerPeer;

class ParameterDiagnostics : public test::Editor {};

struct Flag {
    std::uint32_t mask;
    const char* line;
};

// In the order of their lines.
constexpr std::array<Flag, 22> kFlags{{
    {0x10, " - flag_CFNameRelease"},          {0x2000, " - flag_OmitFromPresets"},
    {0x4000, " - flag_PlotHistory"},          {0x8000, " - flag_MeterReadOnly"},
    {0x470000, " - flag_DisplayMask"},        {0x10000, " - flag_DisplaySquareRoot"},
    {0x20000, " - flag_DisplaySquared"},      {0x30000, " - flag_DisplayCubed"},
    {0x40000, " - flag_DisplayCubeRoot"},     {0x50000, " - flag_DisplayExponential"},
    {0x100000, " - flag_HasClump"},           {0x200000, " - flag_ValuesHaveStrings"},
    {0x400000, " - flag_DisplayLogarithmic"}, {0x800000, " - flag_IsHighResolution"},
    {0x1000000, " - flag_NonRealTime"},       {0x2000000, " - flag_CanRamp"},
    {0x4000000, " - flag_ExpertMode"},        {0x8000000, " - flag_HasCFNameString"},
    {0x10000000, " - flag_IsGlobalMeta"},     {0x20000000, " - flag_IsElementMeta"},
    {0x40000000, " - flag_IsReadable"},       {0x80000000, " - flag_IsWritable"},
}};

constexpr auto kHeading = "- The flag value includes the following flags... ";

} // namespace

TEST_F(ParameterDiagnostics, DescribesEachParameterOnceWithTwoBlanksBehindTheColons) {
    load();
    log.clear();
    unit = makeUnit();
    controller->setAudioUnit(unit);
    headless.settle();
    const auto all = lines();
    const auto start = std::find(all.begin(), all.end(),
                                 "\n\tExtensionViewController: Folllowing AU parameter was found... ");
    ASSERT_NE(start, all.end());
    const std::vector<std::string> first(start, start + 13);
    EXPECT_EQ(first,
              (std::vector<std::string>{
                  "\n\tExtensionViewController: Folllowing AU parameter was found... ", "\t- address:  0",
                  "\t- displayName:  Limiter Attack", "\t- value:  0.1", "\t- options:  3221225472",
                  "\t- The flag value includes the following flags... ", "\t - flag_IsReadable",
                  "\t - flag_IsWritable", "\t- maxValue:  1.0", "\t- minValue:  0.0",
                  "\t- unit: (type  0) generic", "\t- unitName:  ", "\t- valueStrings:  "}));
    EXPECT_EQ(count("\n\tExtensionViewController: Folllowing AU parameter was found... "), 12u);
}

TEST_F(ParameterDiagnostics, AnAbsentGroupHasNoChildren) {
    Peer::extract(*controller, nullptr);
    EXPECT_EQ(lines(),
              std::vector<std::string>{"ExtensionViewController: The parameter group has no children."});
}

TEST_F(ParameterDiagnostics, NestedGroupsAreDescribedAtEachLevelTheyAreFoundFrom) {
    const auto leaf = AUParameterTree::createParameter("leaf", "Leaf", 77, 0.0F, 2.0F,
                                                       AudioUnitParameterUnit::Indexed, "steps", 0x40000000,
                                                       std::vector<std::string>{"one", "two"}, std::nullopt);
    const auto inner = AUParameterTree::createGroup("inner", "Inner", {leaf});
    const auto outer = AUParameterTree::createGroup("outer", "Outer", {inner});
    const auto tree = AUParameterTree::createTree({outer});
    Peer::extract(*controller, tree.get());
    // Once among all of the outer group's, once as the inner group's own.
    EXPECT_EQ(count("\n\tExtensionViewController: Folllowing AU parameter was found... "), 1u);
    EXPECT_EQ(count("\n\t\tExtensionViewController: Folllowing AU parameter was found... "), 1u);
    EXPECT_EQ(Peer::parameters(*controller).size(), 2u);
    EXPECT_EQ(count("\t\t- unit: (type  1) indexed"), 1u);
    EXPECT_EQ(count("\t\t- maxValue:  2.0"), 1u);
    EXPECT_EQ(count("\t\t- unitName:  steps"), 1u);
    EXPECT_EQ(count("\t\t- valueStrings:  [\"one\", \"two\"]"), 1u);
}

TEST_F(ParameterDiagnostics, EachFlagHasItsOwnLine) {
    for (const Flag& flag : kFlags) {
        log.clear();
        verboseFlags(flag.mask, 1);
        std::vector<std::string> expected{std::string("\t") + kHeading};
        for (const Flag& contained : kFlags) {
            if ((flag.mask & contained.mask) == contained.mask) {
                expected.push_back(std::string("\t") + contained.line);
            }
        }
        EXPECT_EQ(lines(), expected) << flag.line;
    }
}

TEST_F(ParameterDiagnostics, FlagsAreNamedInTheirOrderWhereWhollyContained) {
    verboseFlags(0xFFFFFFFF, 0);
    std::vector<std::string> expected{kHeading};
    for (const Flag& flag : kFlags) {
        expected.emplace_back(flag.line);
    }
    EXPECT_EQ(lines(), expected);
    log.clear();
    verboseFlags(0x50000 & ~0x10000U, 2);
    EXPECT_EQ(lines(),
              (std::vector<std::string>{std::string("\t\t") + kHeading, "\t\t - flag_DisplayCubeRoot"}));
}

TEST_F(ParameterDiagnostics, ParameterKindsAreNamedInTheirOrder) {
    const std::array<const char*, 29> names{"generic",
                                            "indexed",
                                            "boolean",
                                            "percent",
                                            "seconds",
                                            "sampleFrames",
                                            "phase",
                                            "rate",
                                            "hertz",
                                            "cents",
                                            "relativeSemiTones",
                                            "midiNoteNumber",
                                            "midiController",
                                            "decibels",
                                            "linearGain",
                                            "degrees",
                                            "equalPowerCrossfade",
                                            "mixerFaderCurve1",
                                            "pan",
                                            "meters",
                                            "absoluteCents",
                                            "octaves",
                                            "BPM",
                                            "beats",
                                            "milliseconds",
                                            "ratio",
                                            "customUnit",
                                            "unknown parameter kind",
                                            "unknown parameter kind"};
    for (std::size_t kind = 0; kind < names.size(); ++kind) {
        EXPECT_EQ(verboseParameterKind(static_cast<AudioUnitParameterUnit>(kind)), names[kind]) << kind;
    }
}
