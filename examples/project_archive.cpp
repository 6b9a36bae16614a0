// How do I store results in a project archive, and how do I find and read them again?

#include <common/file/input_stream.h>
#include <common/file/lwz_version.h>
#include <common/file/name.h>
#include <common/file/zip.h>
#include <common/sys/text_encoding.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace {

using sys::file::Zip;

//! [write]
// Puts a file into the archive of its project, which is made when it is not there; Add alone would
// fail where the name is taken. On disk there is the old archive or the new one, never half of one.
gtl::status Store(const std::wstring& file, const doc::file::Name& name) {
    Zip zip;
    gtl::status result = zip.Open(name.ProjectPath(), sys::file::zip::CompactMode::OnClose);
    const std::wstring entry = name.EntryName();
    Zip::Ids same;
    if (result.Succeeded()) {  // exactly this name; Find would take "Stage" for "stage"
        result = zip.FindAllMatching(same, [&](const std::wstring& it) { return it == entry; });
    }
    if (result.Succeeded()) {
        result = same.empty() ? zip.Add(file, entry) : zip.ReplaceAt(same.front(), file, {});
    }
    if (result.Succeeded()) {
        result = zip.SetComment(L"8.1");  // the version of the project's format
    }
    return result.Succeeded() ? zip.Close() : result;
}
//! [write]

//! [read]
gtl::status Show(const std::wstring& path) {
    Zip zip;
    gtl::status result = zip.OpenReadOnly(sys::file::MakeFileInputStream(path));
    Zip::Ids ids;
    if (result.Succeeded()) {
        result = zip.Find(ids, L"*.csv");
    }
    if (result.Failed()) {
        return result;
    }
    const auto version = doc::file::GetLwzVersion(zip);
    std::printf("version %d.%d\n", version[0], version[1]);
    for (const Zip::Id id : ids) {
        Zip::Bytes bytes;  // only when they fit their sum
        if (result = zip.Extract(id, bytes); result.Failed()) {
            return result;
        }
        std::printf("%s: %.*s", sys::Narrow(zip.GetName(id)).c_str(),
                    static_cast<int>(bytes.size()), reinterpret_cast<const char*>(bytes.data()));
    }
    return result;
}
//! [read]

}  // namespace

int main() {
    std::ofstream("node.csv", std::ios::binary) << "node,head\n1,12.5\n";

    doc::file::Name name;
    name.ProjectPath(L"dam.lwz").Analysis(L"Rapid drawdown").FNameExt(L"node.csv");
    name.Step(Step::CreateFromInt(12));
    std::printf("%s\n", sys::Narrow(name.Description()).c_str());

    gtl::status result = Store(L"node.csv", name);
    if (result.Succeeded()) {
        result = Show(L"dam.lwz");
    }
    std::printf("%s\n", result.Succeeded() ? "done" : sys::Narrow(result.as_wstring()).c_str());
    return result.Succeeded() ? 0 : 1;
}
