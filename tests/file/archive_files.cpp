#include "tests/file/archive_files.h"

#include "common/sys/text_encoding.h"

#include <algorithm>
#include <filesystem>
#include <random>

namespace lmw::test {

namespace fs = std::filesystem;

std::string ArchiveData(const std::string& name) {
    return ReadFile(fs::path(LMW_ARCHIVE_DATA) / (name + ".zip"));
}

std::vector<std::string> ArchiveDataNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(LMW_ARCHIVE_DATA)) {
        if (entry.path().extension() == ".zip") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

sys::file::InputStream StreamOver(const std::string& bytes) {
    return sys::file::MakeMemoryInputStream(L"memory", bytes.data(), bytes.size());
}

std::string Noise(std::size_t size, unsigned seed) {
    std::mt19937_64 engine(seed);
    std::string noise(size, '\0');
    for (char& byte : noise) {
        byte = static_cast<char>(engine() >> 56);
    }
    return noise;
}

std::string Text(const sys::file::Zip::Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string Content(const sys::file::Zip& zip, const std::wstring& name) {
    sys::file::Zip::Ids ids;
    sys::file::Zip::Bytes bytes;
    gtl::status result =
        zip.FindAllMatching(ids, [&name](const std::wstring& entry) { return entry == name; });
    if (result.Succeeded()) {
        result = zip.Extract(ids.empty() ? ~0ULL : ids.front(), bytes);
    }
    return result.Succeeded() ? Text(bytes) : sys::Narrow(result.as_wstring());
}

std::vector<std::wstring> Names(const sys::file::Zip& zip) {
    std::vector<std::wstring> names;
    for (const sys::file::Zip::Id id : zip.GetAllFileIDs()) {
        names.push_back(zip.GetName(id));
    }
    return names;
}

}  // namespace lmw::test
