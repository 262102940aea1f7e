#include "hosts/cli/Program.h"

int main(int argumentCount, char** arguments) {
    return qor::cli::runProgram(argumentCount, arguments);
}
