#include "hosts/standalone/App.h"

#include <clocale>

int main(int argumentCount, char** arguments) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): no other thread runs yet
    std::setlocale(LC_CTYPE, ""); // typed text beyond ASCII; numbers stay as they are
    const qor::app::ParsedOptions parsed = qor::app::parseOptions(argumentCount, arguments);
    return parsed.exitStatus ? *parsed.exitStatus : qor::app::runApp(parsed.options);
}
