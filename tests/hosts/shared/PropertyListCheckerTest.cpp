#include "hosts/shared/PropertyListChecker.h"

#include "hosts/shared/StateTestSupport.h"

#include <gmock/gmock.h>

#include <limits>
#include <set>

namespace {

using namespace qor;
using namespace qor::host;
using testing::HasSubstr;

class PropertyListChecker : public test::StateHost {
protected:
    PropertyListDictionary valid_ = stateDictionary(defaultParameterValues(), "Valid");
};

std::string refusalOf(const PropertyListDictionary& state) {
    const auto checked = checkState(state, Completeness::allParameters);
    return checked ? "accepted" : checked.error().localizedDescription();
}

/// One value of every kind.
std::vector<PropertyList> everyKind() {
    return {
        true, -7, 0.5, "text", Data{1}, PropertyListDate{0.0}, PropertyListArray{}, PropertyListDictionary{}};
}

/// Replaces the value at every place below a dictionary by every other kind and hands each to `visit`.
template <class Visit>
void corruptEach(PropertyListDictionary& root, PropertyListDictionary& here, const std::string& path,
                 Visit visit) {
    for (std::size_t i = 0; i < here.size(); ++i) {
        const std::string key = (here.begin() + i)->key;
        const std::string keyPath = path.empty() ? key : path + " / " + key;
        const PropertyList original = *here.find(key);
        for (const PropertyList& other : everyKind()) {
            const bool numbers = key == "value" && other.asNumber();
            if (other.kind() != original.kind() && !numbers) {
                here.set(key, other);
                visit(root, key, keyPath, other);
            }
        }
        here.set(key, original);
        if (PropertyListDictionary* inner = here.find(key)->asDictionary()) {
            corruptEach(root, *inner, keyPath, visit);
        }
    }
}

} // namespace

TEST_F(PropertyListChecker, AValidStateIsAccepted) {
    const auto checked = checkState(valid_, Completeness::allParameters);
    ASSERT_TRUE(checked) << checked.error().localizedDescription();
    EXPECT_EQ(checked.value().dictionary, valid_);
    EXPECT_EQ(checked.value().name, "Valid");
    EXPECT_THAT(checked.value().notes, testing::IsEmpty());
    EXPECT_EQ(checked.value().values.at(kLimiterThreshold), 0.8F);
}

TEST_F(PropertyListChecker, EachFieldOfAnotherKindIsRefusedByItsKeyPathAndTheHostKeepsItsState) {
    ASSERT_TRUE(host_->setParameter(kLimiterTrim, 0.625F));
    const ParameterValues before = parameterValues(*host_);
    int corruptions = 0;
    corruptEach(valid_, valid_, "",
                [&](const PropertyListDictionary& state, const std::string& key, const std::string& keyPath,
                    const PropertyList& other) {
                    ++corruptions;
                    if (key == "count") { // the reader ignores it, whatever it is
                        EXPECT_EQ(refusalOf(state), "accepted");
                        return;
                    }
                    const std::string refusal = refusalOf(state);
                    EXPECT_THAT(refusal, testing::StartsWith(keyPath)) << describe(other);
                    EXPECT_THAT(refusal, HasSubstr(", wanted ")) << keyPath;
                    const auto bytes = PropertyListSerialization::dataWithPropertyList(state, 100, 0);
                    ASSERT_TRUE(bytes);
                    ASSERT_FALSE(restoreState(*host_, bytes.value())) << keyPath;
                    ASSERT_EQ(parameterValues(*host_), before);
                });
    EXPECT_GT(corruptions, 500);
}

TEST_F(PropertyListChecker, NumbersThatWouldStopTheProcessOrMeanAnotherPluginAreRefused) {
    PropertyListDictionary* group = valid_.find("group 05")->asDictionary();
    PropertyListDictionary* param = group->find("param")->asDictionary();
    const auto refusalWith = [&](PropertyListDictionary& where, const char* key, const PropertyList& value) {
        const PropertyList before = *where.find(key);
        where.set(key, value);
        const std::string refusal = refusalOf(valid_);
        where.set(key, before);
        return refusal;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(
        refusalWith(*param, "address", -1),
        "group 05 / param / address: found -1, wanted the address of a parameter, an integer from 0 to 11.");
    EXPECT_THAT(refusalWith(*param, "address", 12), HasSubstr("group 05 / param / address: found 12"));
    EXPECT_THAT(refusalWith(*param, "value", infinity), HasSubstr("group 05 / param / value: found inf"));
    EXPECT_THAT(refusalWith(*param, "value", std::nan("")), HasSubstr("group 05 / param / value: found "));
    EXPECT_THAT(refusalWith(*param, "value", 1e300), HasSubstr("wanted a finite number"));
    EXPECT_THAT(refusalWith(valid_, "type", std::int64_t{1} << 32U), HasSubstr("type: found 4294967296"));
    EXPECT_THAT(refusalWith(valid_, "type", -1), HasSubstr("type: found -1"));
    EXPECT_THAT(refusalWith(valid_, "version", 2), HasSubstr("version: found 2"));
    EXPECT_THAT(refusalWith(valid_, "manufacturer", 1), HasSubstr("manufacturer: found 1"));
    EXPECT_THAT(refusalWith(valid_, "subtype", 1), HasSubstr("subtype: found 1"));
    EXPECT_EQ(refusalOf(valid_), "accepted");
}

TEST_F(PropertyListChecker, AMissingAddressOrValueIsRefused) {
    for (const char* key : {"address", "value"}) {
        PropertyListDictionary state = valid_;
        state.find("group 07")->asDictionary()->find("param")->asDictionary()->remove(key);
        EXPECT_THAT(refusalOf(state),
                    testing::StartsWith("group 07 / param / " + std::string(key) + ": found nothing"));
    }
}

TEST_F(PropertyListChecker, EveryKeyThatHoldsTheWordGroupIsChecked) {
    valid_.set("my groups", 1);
    EXPECT_THAT(refusalOf(valid_),
                HasSubstr("my groups: found a value of kind integer, wanted a dictionary"));
    valid_.set("my groups", PropertyListDictionary{{"anything", 1}});
    valid_.set("other", Data{1});
    EXPECT_EQ(refusalOf(valid_), "accepted");
}

TEST_F(PropertyListChecker, APresetMayLeaveParametersOutButNotAll) {
    for (int address = 1; address < 12; ++address) {
        valid_.remove((address < 10 ? "group 0" : "group ") + std::to_string(address));
    }
    const auto checked = checkState(valid_, Completeness::someParameters);
    ASSERT_TRUE(checked);
    ASSERT_EQ(checked.value().notes.size(), 1U);
    EXPECT_THAT(checked.value().notes[0],
                HasSubstr("It leaves as they are: kLimiterRelease, kLimiterThreshold"));
    valid_.remove("group 00");
    EXPECT_FALSE(checkState(valid_, Completeness::someParameters));
}

TEST_F(PropertyListChecker, ValuesOutsideTheirRangeAreHeldToItWithANote) {
    valid_.find("group 06")->asDictionary()->find("param")->asDictionary()->set("value", 9);
    const auto checked = checkState(valid_, Completeness::allParameters);
    ASSERT_TRUE(checked);
    EXPECT_EQ(checked.value().values.at(6), 3.0F);
    EXPECT_EQ(checked.value().notes.at(0),
              "group 06 / param / value: 9.0 lies outside 0.0 to 3.0 of kLimiterMode; 3.0 is used.");
}

TEST_F(PropertyListChecker, SizeDepthAndEntitiesAreLimited) {
    const auto refusalOfText = [](const std::string& xml) {
        const auto checked = checkState(dataFromText(xml), Completeness::someParameters);
        return checked ? std::string("accepted") : checked.error().localizedDescription();
    };
    EXPECT_THAT(refusalOfText(std::string((1U << 20U) + 1, ' ')), HasSubstr("the limit is 1048576"));
    std::string deep = "<plist>";
    for (int i = 0; i < 9; ++i) {
        deep += "<array>";
    }
    EXPECT_THAT(refusalOfText(deep), HasSubstr("nested deeper than 8 levels"));
    EXPECT_THAT(refusalOfText("<!DOCTYPE plist [<!ENTITY a \"&a;\">]><plist><string>&a;</string></plist>"),
                HasSubstr("declarations"));
    EXPECT_THAT(refusalOfText("<plist><array/></plist>"), HasSubstr("kind array, wanted a dictionary"));
}
