// The worked example: its chapters one after the other, written to a folder and packed.

#include "common/file/lwz_version.h"
#include "common/file/zip.h"
#include "common/version.h"

#include "tools/lmw/commands.h"
#include "tools/lmw/demo_chapters.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/json_text.h"
#include "tools/lmw/progress_bar.h"
#include "tools/lmw/svg_text.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

namespace lmw::tool {
namespace {

// The entries of a file of the results: none, or one.
sys::file::Zip::Ids EntriesOf(const sys::file::Zip& zip, const DemoFile& file) {
    sys::file::Zip::Ids ids;
    Require(zip.FindAllMatching(
        ids, [entry = file.name.EntryName()](const std::wstring& name) { return name == entry; }));
    return ids;
}

// Packs the results into a project archive. What an earlier run left there is replaced, other
// entries stay.
void Pack(const DemoResults& results) {
    sys::file::Zip zip;
    Require(zip.Open(Wide(results.Archive()), sys::file::zip::CompactMode::OnClose));
    for (const DemoFile& each : results.files) {
        Require(zip.Delete(EntriesOf(zip, each)));
        Require(zip.Add(Wide(each.file.name), each.name.EntryName()));
    }
    Require(zip.SetComment(L"8.1"));  // the version of the project's format
    Require(zip.Close());
}

// An entry of the archive, found under its name.
struct Packed {
    doc::file::Name name;
    std::uint64_t size = 0;
    std::uint64_t packed_size = 0;
};

// Opens the archive as another program would, tests all of it, and finds every file under its name.
// In the order of the names.
std::vector<Packed> Reopened(const DemoResults& results, std::string& version) {
    sys::file::Zip zip;
    Require(zip.OpenReadOnly(sys::file::MakeFileInputStream(Wide(results.Archive()))));
    Require(zip.Test(zip.GetAllFileIDs()));
    const auto numbers = doc::file::GetLwzVersion(zip);
    version = std::to_string(numbers[0]) + "." + std::to_string(numbers[1]);
    std::vector<Packed> entries;
    for (const DemoFile& each : results.files) {
        const sys::file::Zip::Ids ids = EntriesOf(zip, each);
        if (ids.size() != 1) {
            throw Failure(results.Archive() + ": not one entry, but " + std::to_string(ids.size()) +
                          ", of the name " + Utf8(each.name.Description()));
        }
        entries.push_back({each.name, zip.GetSize(ids.front()), zip.GetPackedSize(ids.front())});
    }
    std::sort(entries.begin(), entries.end(),
              [](const Packed& a, const Packed& b) { return a.name < b.name; });
    return entries;
}

std::string Listing(const std::vector<Packed>& entries, const std::string& version) {
    std::string text = "\nPacked into a project archive of version " + version +
                       ", closed, opened again, all entries tested:\n\n"
                       "   bytes  packed  name\n";
    for (const Packed& entry : entries) {
        text += Column(static_cast<double>(entry.size), 8, 0) +
                Column(static_cast<double>(entry.packed_size), 8, 0) + "  " +
                Utf8(entry.name.Description()) + "\n";
    }
    return text;
}

std::string Json(const DemoResults& results, const std::vector<Packed>& entries,
                 const std::string& version) {
    JsonText json;
    json.BeginObject();
    json.Key("folder").Value(results.folder);
    json.Key("files").BeginArray();
    for (const DemoFile& each : results.files) {
        json.Value(results.ShortName(each));
    }
    json.End();
    json.Key("archive").Value(results.Archive());
    json.Key("version").Value(version);
    json.Key("entries").BeginArray();
    for (const Packed& entry : entries) {
        json.BeginObject();
        json.Key("name").Value(Utf8(entry.name.EntryName()));
        json.Key("size").Count(static_cast<std::size_t>(entry.size));
        json.Key("packed_size").Count(static_cast<std::size_t>(entry.packed_size));
        json.End();
    }
    json.End().End();
    return json.Text();
}

// A page that shows the report and all pictures together.
std::string Page(const DemoResults& results) {
    std::string page =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<title>Worked example</title>\n"
        "<style>body { font-family: sans-serif; margin: 2em; } pre { overflow-x: auto; } "
        "section { display: grid; grid-template-columns: repeat(auto-fill, minmax(34em, 1fr)); "
        "gap: 2em; } figure { margin: 0; } img { max-width: 100%; "
        "}</style>\n</head>\n<body>\n<h1>Worked example</h1>\n<pre>";
    std::istringstream report(results.report);
    for (std::string line; std::getline(report, line);) {
        page += XmlEscaped(line) + "\n";  // which takes a line end for a control character
    }
    page += "</pre>\n";
    std::wstring analysis;
    for (const DemoFile& each : results.files) {
        const std::string name = XmlEscaped(results.ShortName(each));
        if (!name.ends_with(".svg")) {
            continue;
        }
        if (each.name.Analysis() != analysis) {
            page += analysis.empty() ? "" : "</section>\n";
            analysis = each.name.Analysis();
            page.append("<h2>").append(XmlEscaped(Utf8(analysis))).append("</h2>\n<section>\n");
        }
        page.append("<figure><img src=\"").append(name).append("\" alt=\"").append(name);
        page.append("\"><figcaption>").append(name).append("</figcaption></figure>\n");
    }
    page += analysis.empty() ? "" : "</section>\n";
    return page + "</body>\n</html>\n";
}

struct DemoOptions {
    std::string folder;
    std::string data = "examples/data";
    bool json = false;
};

// Nothing is written when the results could not be, or would replace the data.
void CheckFolder(const DemoResults& results) {
    if (IsSamePlace(results.folder, results.data)) {
        throw Failure(results.folder +
                      ": is the folder of the data, which results may not replace");
    }
    std::error_code ignored;
    if (std::filesystem::is_directory(PathOf(results.Archive()), ignored)) {
        throw Failure(results.Archive() + ": is a folder");
    }
}

void RunDemo(const DemoOptions& options, std::ostream& out) {
    ProgressBar progress;
    auto begin = [&progress, begun = 0.0](const char* what) mutable {
        constexpr double kChapters = 8.0;
        progress.Show(begun++ / kChapters, what);
    };
    DemoResults results{options.data, options.folder};
    CheckFolder(results);
    results.report = "Loamworks Core " LMW_VERSION_STRING "\n";
    begin("soils");
    const std::vector<FittedSoil> soils = AddSoils(results);
    begin("rain");
    AddRain(results);
    begin("sections");
    AddSections(results);
    begin("functions");
    const DamFunctions functions = AddFunctions(results, soils);
    begin("mesh and water");
    AddWater(results, functions);
    begin("strengths");
    AddStrengths(results);

    begin("files");
    results.analysis = L"Report";
    results.Keep("index.html", Page(results));
    MakeFolder(results.folder);
    std::vector<OutputFile> files;
    for (const DemoFile& each : results.files) {
        files.push_back(each.file);
    }
    WriteFiles(files);
    begin("archive");
    Pack(results);
    std::string version;
    const std::vector<Packed> entries = Reopened(results, version);
    progress.End();
    out << (options.json ? Json(results, entries, version)
                         : results.report + Listing(entries, version) + "\n" +
                               std::to_string(files.size()) + " files in " + results.folder +
                               "; index.html shows report and pictures together.\n");
}

}  // namespace

void AddDemo(CLI::App& program, std::ostream& out) {
    const auto options = std::make_shared<DemoOptions>();
    CLI::App* const command = program.add_subcommand(
        "demo", "Run the worked example: a dam from measured soils to a project");
    command
        ->add_option("FOLDER", options->folder,
                     "Where tables (CSV), pictures (SVG), page and archive go")
        ->required()
        ->type_name("");
    command
        ->add_option("--data", options->data,
                     "Folder of the measured data; examples/data unless given")
        ->type_name("FOLDER");
    command->add_flag("--json", options->json, "Print the files and entries as JSON, no report");
    command->callback([options, &out] { RunDemo(*options, out); });
}

}  // namespace lmw::tool
