// Preset files of any bytes through the checker and, if it lets them pass, through the unit's reader.
#include "hosts/shared/PropertyListChecker.h"
#include "unit/QORPreset.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace qor;

/// What the checker passes may name the twelve parameters only, with values in their ranges.
class StrictDelegate final : public QORPresetDelegate {
public:
    void onFoundParameter(std::int64_t /*group*/, const std::string& /*identifier*/, std::uint64_t address,
                          float value) override {
        const ParameterRow* row = parameterRow(address);
        if (row == nullptr || !(value >= row->minimum && value <= row->maximum)) {
            std::abort();
        }
    }
};

/// What can be read can be written and read again as it was.
void requireRoundTrip(const PropertyList& list) {
    const auto bytes = PropertyListSerialization::dataWithPropertyList(list, NSPropertyListXMLFormat_v1_0, 0);
    if (!bytes) {
        return; // a character number can bring in what XML can't hold in the end
    }
    NSPropertyListFormat format = 0;
    const auto again = PropertyListSerialization::propertyListWithData(bytes.value(), 0, format);
    if (!again || describe(again.value()) != describe(list)) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Ref<StrictDelegate> delegate = makeRef<StrictDelegate>();
    QORPreset::delegate = delegate;
    const Data bytes(data, data + size);
    NSPropertyListFormat format = NSPropertyListXMLFormat_v1_0;
    if (const auto list = PropertyListSerialization::propertyListWithData(bytes, 2, format)) {
        requireRoundTrip(list.value());
    }
    for (const auto completeness : {host::Completeness::someParameters, host::Completeness::allParameters}) {
        if (const auto state = host::checkState(bytes, completeness)) {
            QORPreset preset;
            preset.makeFrom(state.value().dictionary);
            (void)preset.getDictionary();
        }
    }
    return 0;
}
