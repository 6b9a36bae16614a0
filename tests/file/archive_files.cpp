#include "tests/file/archive_files.h"

#include "common/sys/text_encoding.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <system_error>
#include <type_traits>

namespace lmw::test {

namespace fs = std::filesystem;

namespace {

template <class Native>
std::wstring WideNative(const Native& native) {
    if constexpr (std::is_same_v<Native, std::wstring>) {
        return native;
    } else {
        return sys::Widen(native);
    }
}

}  // namespace

ScratchFolder::ScratchFolder() {
    std::random_device device;
    do {
        path_ = fs::temp_directory_path() / ("lmw-test-" + std::to_string(device()));
    } while (!fs::create_directory(path_));
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(path_, ignored)) {
        fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(path_, ignored);
}

std::wstring ScratchFolder::operator/(const std::string& name) const {
    return WidePath(path_ / name);
}

std::wstring ScratchFolder::Write(const std::string& name, std::string_view content) const {
    const fs::path file = path_ / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return WidePath(file);
}

std::vector<std::string> ScratchFolder::Files() const {
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(path_)) {
        if (!entry.is_directory()) {
            files.push_back(fs::relative(entry.path(), path_).generic_string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::wstring WidePath(const fs::path& path) {
    return WideNative(path.native());
}

std::string ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

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
