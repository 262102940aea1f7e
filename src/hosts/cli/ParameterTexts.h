// The parameter table as texts.
#pragma once

#include <string>

namespace qor::cli {

/// One line per parameter under a line of headings, columns aligned.
std::string parametersAsTable();
/// An array of objects in address order.
std::string parametersAsJson();

} // namespace qor::cli
