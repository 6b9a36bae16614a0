#include "common/file/zip_options.h"

#include "common/file/split_path.h"

namespace sys::file::zip {

IExtractName::~IExtractName() = default;

std::wstring ExtractNameSame::ExtractName(const std::wstring& entry_name) const {
    return entry_name;
}

std::wstring ExtractNameFName::ExtractName(const std::wstring& entry_name) const {
    if (entry_name.empty() || entry_name.back() == L'\\' || entry_name.back() == L'/') {
        return entry_name;
    }
    const PathParts parts = SplitPath(entry_name);
    return parts.directory + fname_ + parts.ext;
}

}  // namespace sys::file::zip
