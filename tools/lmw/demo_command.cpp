// The worked example: its chapters one after the other, written to a folder and packed.

#include "common/file/lwz_version.h"
#include "common/file/zip.h"
#include "common/version.h"

#include "tools/lmw/commands.h"
#include "tools/lmw/demo_chapters.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/svg_text.h"
#include "tools/lmw/text.h"

#include <memory>
#include <ostream>
#include <sstream>
#include <string>

namespace lmw::tool {
namespace {

void Require(const gtl::status& result) {
    if (result.Failed()) {
        throw Failure(Utf8(result.as_wstring()));
    }
}

// Packs the results into a project archive, and reads it as another program would.
void Pack(const DemoResults& results, std::ostream& out) {
    const std::string name = results.folder + "/demo.lwz";
    sys::file::Zip zip;
    Require(zip.Open(Wide(name), sys::file::zip::CompactMode::OnClose));
    Require(zip.Delete(zip.GetAllFileIDs()));  // of an earlier run
    for (const OutputFile& file : results.files) {
        Require(zip.Add(Wide(file.name),
                        L"Results\\" + Wide(file.name.substr(results.folder.size() + 1))));
    }
    Require(zip.SetComment(L"8.1"));
    Require(zip.Close());

    Require(zip.OpenReadOnly(sys::file::MakeFileInputStream(Wide(name))));
    Require(zip.Test(zip.GetAllFileIDs()));
    const auto version = doc::file::GetLwzVersion(zip);
    out << "\nPacked into demo.lwz, version " << version[0] << '.' << version[1]
        << ", all entries tested:\n";
    for (const sys::file::Zip::Id id : zip.GetAllFileIDs()) {
        out << Column(static_cast<double>(zip.GetSize(id)), 10, 0) << "  " << Utf8(zip.GetName(id))
            << '\n';
    }
}

// A page that shows the report and all pictures together.
std::string Page(const DemoResults& results) {
    std::string page =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<title>Worked example</title>\n"
        "<style>body { font-family: sans-serif; margin: 2em; } figure { margin: 2em 0; } "
        "img { max-width: 100%; }</style>\n</head>\n<body>\n<h1>Worked example</h1>\n<pre>";
    std::istringstream report(results.report);
    for (std::string line; std::getline(report, line);) {
        page += XmlEscaped(line) + "\n";  // which takes a line end for a control character
    }
    page += "</pre>\n";
    for (const OutputFile& file : results.files) {
        const std::string name = XmlEscaped(file.name.substr(results.folder.size() + 1));
        if (name.ends_with(".svg")) {
            page.append("<figure><img src=\"").append(name).append("\" alt=\"").append(name);
            page.append("\"><figcaption>").append(name).append("</figcaption></figure>\n");
        }
    }
    return page + "</body>\n</html>\n";
}

void RunDemo(DemoResults results, std::ostream& out) {
    results.report = "Loamworks Core " LMW_VERSION_STRING "\n";
    AddSoils(results);
    AddSections(results);
    results.Keep("index.html", Page(results));
    MakeFolder(results.folder);
    WriteFiles(results.files);
    out << results.report << "\nWritten to " << results.folder << ":\n";
    for (const OutputFile& file : results.files) {
        out << "  " << file.name.substr(results.folder.size() + 1) << "\n";
    }
    Pack(results, out);
}

}  // namespace

void AddDemo(CLI::App& program, std::ostream& out) {
    struct Options {
        std::string folder;
        std::string data = "examples/data";
    };
    const auto options = std::make_shared<Options>();
    CLI::App* const command =
        program.add_subcommand("demo", "Run the worked example on measured soils");
    command->add_option("FOLDER", options->folder, "Where tables (CSV) and pictures (SVG) go")
        ->required()
        ->type_name("");
    command
        ->add_option("--data", options->data,
                     "Folder of the measured data; examples/data unless given")
        ->type_name("FOLDER");
    command->callback([options, &out] { RunDemo({options->data, options->folder}, out); });
}

}  // namespace lmw::tool
