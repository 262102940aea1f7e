#include "hosts/cli/OutputFile.h"

#include <cerrno>
#include <system_error>

namespace qor::cli {

namespace {

std::string reasonOf(int code) {
    switch (code) {
    case EISDIR:
        return "it is a folder";
    case ENOTSUP:
        return "it is not a plain file";
    default:
        return std::generic_category().message(code);
    }
}

const char* remedyFor(int code) {
    switch (code) {
    case EISDIR:
        return "Add a file name.";
    case ENOTSUP:
        return "Name a plain file.";
    case ENOSPC:
    case EDQUOT:
        return "Free some space or choose another disk.";
    case EFBIG:
        return "The file is larger than the system allows here; choose a smaller format or raise the limit.";
    case EACCES:
    case EPERM:
    case EROFS:
        return "Choose a folder that you may write to.";
    case ENOENT:
    case ENOTDIR:
        return "Create the folder first.";
    case ENAMETOOLONG:
        return "Choose a shorter name.";
    default:
        return "Choose another place.";
    }
}

} // namespace

NSError writeFailure(const std::string& file, int code) {
    return workFailed("cannot write " + quotedName(file) + ": " + reasonOf(code) + ". " + remedyFor(code));
}

Result<std::unique_ptr<OutputFile>> OutputFile::create(const std::string& target) {
    if (target.empty()) {
        return wrongUsage("an output file needs a name");
    }
    Result<std::unique_ptr<AtomicFile>> file = AtomicFile::create(target);
    if (!file) {
        return writeFailure(target, static_cast<int>(file.error().code));
    }
    return std::unique_ptr<OutputFile>(new OutputFile(target, std::move(file).value()));
}

Result<void> OutputFile::explained(const Result<void>& result) const {
    return result ? Result<void>() : writeFailure(target_, static_cast<int>(result.error().code));
}

} // namespace qor::cli
