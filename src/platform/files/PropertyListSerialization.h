// Property lists as bytes and back.
#pragma once

#include "platform/core/Result.h"
#include "platform/files/Data.h"
#include "platform/files/PropertyList.h"
#include "platform/files/PropertyListScanner.h"

#include <cstdint>

namespace platform {

using NSPropertyListFormat = std::uint64_t;
inline constexpr NSPropertyListFormat NSPropertyListXMLFormat_v1_0 = 100;

using NSPropertyListOptions = std::uint64_t;
inline constexpr NSPropertyListOptions NSPropertyListImmutable = 0;
inline constexpr NSPropertyListOptions NSPropertyListMutableContainersAndLeaves = 2;

inline constexpr long NSPropertyListReadCorruptError = 3840;
inline constexpr long NSPropertyListWriteInvalidError = 3852;

/// Any thread; neither direction depends on the process's locale, and reals come back bit for bit (a NaN as
/// some NaN). Errors are of `NSCocoaErrorDomain`.
class PropertyListSerialization {
public:
    /// The XML form in UTF-8. Fails for another format, for a text or key that XML can't hold (bad UTF-8,
    /// control characters) and for a date outside 1934 to 2068.
    static Result<Data> dataWithPropertyList(const PropertyList& list, NSPropertyListFormat format,
                                             NSPropertyListOptions options);
    /// Reads the XML form. On success `format` becomes the form that was found; on failure it stays. Values
    /// are always modifiable, whatever the options say. Of equal keys the last one's value holds.
    static Result<PropertyList> propertyListWithData(const Data& data, NSPropertyListOptions options,
                                                     NSPropertyListFormat& format,
                                                     const PropertyListLimits& limits = {});
};

} // namespace platform
