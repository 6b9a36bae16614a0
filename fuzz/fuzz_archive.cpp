// An archive from a stranger: whatever its bytes, opening, listing, testing, extracting and asking
// for its version neither crash nor hang nor write outside the target folder, and the quick answers
// from its end agree with those of the archive opened for good.

#include "common/file/lwz_version.h"
#include "common/file/zip.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

using sys::file::Zip;

[[noreturn]] void Fail() {
    std::abort();
}

void Require(bool holds) {
    if (!holds) {
        Fail();
    }
}

const std::filesystem::path& Folder() {
    static const std::filesystem::path folder = [] {
        std::string name = (std::filesystem::temp_directory_path() / "lmw-fuzz-XXXXXX").string();
        Require(mkdtemp(name.data()) != nullptr);
        std::filesystem::create_directory(std::filesystem::path(name) / "target");
        return std::filesystem::path(name);
    }();
    return folder;
}

void Read(const Zip& zip) {
    constexpr sys::file::zip::ExtractLimits kLimits{1 << 20, 4 << 20, 100};
    const Zip::Ids ids = zip.GetAllFileIDs();
    Require(ids.size() == zip.Count());
    Zip::Ids found;
    Require(zip.Find(found, L"*").Succeeded() && found.size() == ids.size());
    Zip::Bytes bytes;
    for (std::size_t k = 0; k < ids.size() && k < 20; ++k) {
        static_cast<void>(zip.GetName(ids[k]));
        if (zip.Extract(ids[k], bytes, kLimits).Succeeded()) {
            Require(bytes.size() == zip.GetSize(ids[k]));
            Require(zip.Test({ids[k]}).Succeeded());
        } else {
            Require(bytes.empty());
        }
    }
    if (ids.size() <= 8) {
        const std::filesystem::path target = Folder() / "target";
        zip.Extract(ids, std::wstring(target.native().begin(), target.native().end()),
                    sys::file::zip::ExtractNameSame(), kLimits)
            .Ignore();
        for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
            Require(entry.path() == target);
        }
        std::filesystem::remove_all(target);
        std::filesystem::create_directory(target);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const sys::file::InputStream stream = sys::file::MakeMemoryInputStream(L"fuzz", data, size);
    Zip zip;
    const bool opens = zip.OpenReadOnly(stream).Succeeded();
    std::wstring comment;
    Require(Zip::GetComment(stream, comment).Succeeded() == opens);
    Require(comment == zip.GetComment());
    const auto version = doc::file::GetLwzVersion(stream);
    if (opens) {
        Require(version == doc::file::GetLwzVersion(zip));
        zip.Encrypt(L"sesame").Ignore();
        Read(zip);
    }
    return 0;
}
