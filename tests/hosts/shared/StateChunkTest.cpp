#include "hosts/shared/StateChunk.h"

#include "hosts/shared/HostRendering.h"
#include "hosts/shared/StateTestSupport.h"

#include <gmock/gmock.h>

namespace {

using namespace qor;
using namespace qor::host;

class StateChunk : public test::StateHost {};

void set(UnitHost& host, const ParameterValues& values) {
    for (const ParameterRow& row : kParameterTable) {
        ASSERT_TRUE(host.setParameter(row.address, values.at(row.address)));
    }
}

} // namespace

TEST_F(StateChunk, HasOneGroupPerParameterInTheReadersShape) {
    const PropertyListDictionary state = stateDictionary(defaultParameterValues(), "Name");
    EXPECT_EQ(*state.find("name"), PropertyList("Name"));
    EXPECT_EQ(*state.find("count"), PropertyList(12));
    EXPECT_EQ(state.size(), 7U + 12U);
    EXPECT_EQ(describe(*state.find("group 03")),
              "{identifier = \"kGlobalParameters\", count = 1, "
              "param = {address = 3, identifier = \"kLimiterKnee\", value = 0.5}}");
    EXPECT_NE(state.find("group 11"), nullptr);
}

TEST_F(StateChunk, TenThousandRandomStatesComeBackExactly) {
    std::mt19937 random(11);
    for (int i = 0; i < 10000; ++i) {
        const ParameterValues values = test::randomValues(random);
        const auto bytes = stateBytes(values, "any");
        ASSERT_TRUE(bytes);
        const auto restored = restoreState(*host_, bytes.value());
        ASSERT_TRUE(restored) << restored.error().localizedDescription();
        ASSERT_EQ(parameterValues(*host_), values) << "state " << i;
    }
}

TEST_F(StateChunk, OneUnitsStateMovesAllTwelveOfAnother) {
    std::mt19937 random(5);
    const auto other = makeHost();
    for (int i = 0; i < 100; ++i) {
        set(*host_, test::randomValues(random));
        ASSERT_TRUE(restoreState(*other, saveState(*host_)));
        ASSERT_EQ(parameterValues(*other), parameterValues(*host_));
    }
}

TEST_F(StateChunk, TheTreeReportsTheRestoredValues) {
    std::mt19937 random(6);
    const ParameterValues values = test::randomValues(random);
    ASSERT_TRUE(restoreState(*host_, stateBytes(values, "any").value()));
    for (const auto& parameter : host_->unit().parameterTree()->allParameters()) {
        EXPECT_EQ(parameter->value(), values.at(parameter->address())) << parameter->identifier();
    }
}

TEST_F(StateChunk, ARestoredUnitSoundsLikeAFreshOneWhateverItHadBefore) {
    std::mt19937 random(3);
    for (int i = 0; i < 20; ++i) {
        const auto used = makeHost();
        const auto fresh = makeHost();
        for (int before = 0; before < 3; ++before) { // leaves knees, laws and filter edges in the way
            set(*used, test::randomValues(random));
        }
        ParameterValues values = test::randomValues(random);
        values[kLimiterMode] = static_cast<float>(i % 4);
        values[kLimiterBypass] = 0.0F;
        const Data state = stateBytes(values, "any").value();
        ASSERT_TRUE(used->activate(48000.0));
        ASSERT_TRUE(fresh->activate(48000.0));
        ASSERT_TRUE(restoreState(*used, state));
        ASSERT_TRUE(restoreState(*fresh, state));
        const test::Stereo input = test::noise(4096, 0.9F, 17);
        ASSERT_TRUE(test::sameBits(test::render(*used, input, 512), test::render(*fresh, input, 512)))
            << "state " << i;
    }
}

TEST_F(StateChunk, AStateThatTheUnitWroteItselfIsRefusedAsItMovesNothing) {
    const auto own = PropertyListSerialization::dataWithPropertyList(*host_->unit().fullState(), 100, 0);
    const auto restored = restoreState(*host_, own.value());
    ASSERT_FALSE(restored);
    EXPECT_THAT(restored.error().localizedDescription(),
                testing::HasSubstr("\"param 0\" and the like set none"));
}

TEST_F(StateChunk, AChunkWithoutOneOfTheTwelveIsRefusedAndNothingMoves) {
    std::mt19937 random(7);
    const ParameterValues before = test::randomValues(random);
    set(*host_, before);
    for (const ParameterRow& row : kParameterTable) {
        PropertyListDictionary state = stateDictionary(test::randomValues(random), "any");
        state.remove((row.address < 10 ? "group 0" : "group ") + std::to_string(row.address));
        const auto restored =
            restoreState(*host_, PropertyListSerialization::dataWithPropertyList(state, 100, 0).value());
        ASSERT_FALSE(restored);
        EXPECT_THAT(restored.error().localizedDescription(), testing::HasSubstr(row.identifier));
        EXPECT_EQ(parameterValues(*host_), before);
    }
}

TEST_F(StateChunk, AnyByteDamagedIsRefusedOrHarmless) {
    std::mt19937 random(8);
    const ParameterValues before = defaultParameterValues();
    const Data whole = stateBytes(test::randomValues(random), "any").value();
    int refused = 0;
    for (std::size_t i = 0; i < whole.size(); i += 3) {
        Data damaged = whole;
        damaged[i] = static_cast<std::uint8_t>(damaged[i] ^ (1U + random() % 255U));
        set(*host_, before);
        if (restoreState(*host_, damaged)) {
            for (const ParameterRow& row : kParameterTable) {
                const float value = host_->parameter(row.address);
                ASSERT_TRUE(value >= row.minimum && value <= row.maximum) << row.identifier;
            }
        } else {
            ++refused;
            ASSERT_EQ(parameterValues(*host_), before) << "byte " << i;
        }
    }
    EXPECT_GT(refused, static_cast<int>(whole.size()) / 6);
}

TEST_F(StateChunk, EveryTruncationIsRefusedAndNothingMoves) {
    std::mt19937 random(9);
    const Data whole = stateBytes(test::randomValues(random), "any").value();
    const std::string_view text = textView(whole);
    const std::size_t end = text.rfind("</plist>") + 8;
    for (std::size_t length = 0; length < end; length += 7) {
        ASSERT_FALSE(restoreState(*host_, std::span(whole).first(length))) << length;
    }
    EXPECT_EQ(parameterValues(*host_), defaultParameterValues());
}

TEST_F(StateChunk, ValuesOutsideTheirRangeAreHeldToIt) {
    ParameterValues values = defaultParameterValues();
    values[kLimiterMode] = 17.0F;
    values[kLimiterTrim] = -2.0F;
    ASSERT_TRUE(restoreState(*host_, stateBytes(values, "any").value()));
    EXPECT_EQ(host_->parameter(kLimiterMode), 3.0F);
    EXPECT_EQ(host_->parameter(kLimiterTrim), 0.0F);
}
