// lmw archive: looking into project archives and changing them.

#include "common/file/lwz_version.h"
#include "common/file/zip.h"
#include "common/sys/disk_file.h"

#include "tools/lmw/commands.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/json_text.h"
#include "tools/lmw/progress_bar.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace lmw::tool {
namespace {

using sys::file::Zip;
using sys::file::zip::CompactMode;

// What lmw archive test found: exit code 1, unlike Failure.
class Damaged : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

struct ArchiveOptions {
    std::string archive;
    std::string pattern = "*";
    std::string folder;
    std::string below;
    std::string password;
    std::vector<std::string> files;
    std::vector<std::string> comment;
    std::uint64_t most_bytes = sys::file::zip::ExtractLimits::kUnlimited;
    bool replace = false;
    bool json = false;
};

std::wstring CheckedPath(const std::string& file) {
    std::wstring path = Wide(file);
    if (sys::KindOfPath(path) == sys::PathKind::kNothing) {
        throw Failure(file + ": no such file");
    }
    return path;
}

void OpenForReading(Zip& zip, const ArchiveOptions& options) {
    Require(zip.OpenReadOnly(sys::file::MakeSharedFileInputStream(CheckedPath(options.archive))));
    if (!options.password.empty()) {
        Require(zip.Encrypt(Wide(options.password)));
    }
}

void OpenForUpdate(Zip& zip, const ArchiveOptions& options) {
    Require(zip.Open(Wide(options.archive), CompactMode::OnClose));
    if (!options.password.empty()) {
        Require(zip.Encrypt(Wide(options.password)));
    }
}

// Writes the changes; what cannot be written is given up, and the old archive stays.
void CloseUpdate(Zip& zip) {
    ProgressBar bar;
    const gtl::status result = zip.Flush(bar.Function("writing"));
    zip.Discard();
    Require(result);
}

Zip::Ids Matching(const Zip& zip, const std::string& pattern,
                  sys::file::Finder::Filter filter = sys::file::Finder::kFilesAndFolders) {
    Zip::Ids ids;
    Require(zip.Find(ids, Wide(pattern), filter));
    return ids;
}

std::string VersionText(const lmw::version::NumberKind<0>& version) {
    std::string text = std::to_string(version[0]);
    for (std::size_t part = 1; part < version.parts.size() && version.IsSet(part); ++part) {
        text += '.' + std::to_string(version[part]);
    }
    return text;
}

std::string RightAligned(std::uint64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), ' ') + digits;
}

void RunInfo(const ArchiveOptions& options, std::ostream& out) {
    Zip zip;
    OpenForReading(zip, options);
    std::uint64_t size = 0;
    std::uint64_t packed = 0;
    for (const Zip::Id id : zip.GetAllFileIDs()) {
        size += zip.GetSize(id);
        packed += zip.GetPackedSize(id);
    }
    const std::string version = VersionText(doc::file::GetLwzVersion(zip));
    const std::string comment = Utf8(zip.GetComment());
    if (options.json) {
        JsonText json;
        json.BeginObject();
        json.Key("archive").Value(options.archive);
        json.Key("version").Value(version).Key("comment").Value(comment);
        json.Key("entries").Count(zip.Count());
        json.Key("size").Count(size).Key("packed_size").Count(packed);
        json.End();
        out << json.Text();
        return;
    }
    out << "version  " << version << "\ncomment  " << OneLine(comment) << "\nentries  "
        << zip.Count() << "\nsize     " << size << " bytes\npacked   " << packed << " bytes\n";
}

void RunList(const ArchiveOptions& options, std::ostream& out) {
    Zip zip;
    OpenForReading(zip, options);
    const Zip::Ids ids = Matching(zip, options.pattern);
    if (options.json) {
        JsonText json;
        json.BeginArray();
        for (const Zip::Id id : ids) {
            json.BeginObject();
            json.Key("name").Value(Utf8(zip.GetName(id)));
            json.Key("size").Count(zip.GetSize(id));
            json.Key("packed_size").Count(zip.GetPackedSize(id));
            json.Key("encrypted").Count(zip.IsEncrypted(id) ? 1 : 0);
            json.End();
        }
        json.End();
        out << json.Text();
        return;
    }
    for (const Zip::Id id : ids) {
        out << RightAligned(zip.GetSize(id), 14) << RightAligned(zip.GetPackedSize(id), 14)
            << (zip.IsEncrypted(id) ? "  * " : "    ") << OneLine(Utf8(zip.GetName(id))) << '\n';
    }
}

void RunTest(const ArchiveOptions& options, std::ostream& out) {
    Zip zip;
    OpenForReading(zip, options);
    const Zip::Ids ids = Matching(zip, options.pattern);
    JsonText json;
    json.BeginObject();
    json.Key("archive").Value(options.archive).Key("entries").Count(ids.size());
    json.Key("damaged").BeginArray();
    std::string lines;
    std::size_t damaged = 0;
    {
        ProgressBar bar;
        for (std::size_t k = 0; k < ids.size(); ++k) {
            bar.Show(static_cast<double>(k) / static_cast<double>(ids.size()), "testing");
            const gtl::status result = zip.Test({ids[k]});
            if (result.Failed()) {
                ++damaged;
                const std::string reason = Utf8(result.as_wstring());
                json.BeginObject().Key("name").Value(Utf8(zip.GetName(ids[k])));
                json.Key("reason").Value(reason).End();
                lines += OneLine(reason) + '\n';
            }
        }
    }
    json.End().End();
    if (options.json) {
        out << json.Text();
    } else {
        out << lines << ids.size() - damaged << " of " << ids.size() << " entries are good\n";
    }
    if (damaged > 0) {
        throw Damaged(options.archive + ": " + std::to_string(damaged) + " of " +
                      std::to_string(ids.size()) + " entries cannot be read");
    }
}

void RunExtract(const ArchiveOptions& options, std::ostream& out) {
    Zip zip;
    OpenForReading(zip, options);
    const Zip::Ids ids = Matching(zip, options.pattern);
    sys::file::zip::ExtractLimits limits;
    limits.total_size = options.most_bytes;
    {
        ProgressBar bar;
        Require(zip.Extract(ids, Wide(options.folder), sys::file::zip::ExtractNameSame(), limits,
                            bar.Function("extracting")));
    }
    if (options.json) {
        JsonText json;
        json.BeginObject().Key("extracted").Count(ids.size()).End();
        out << json.Text();
    } else {
        out << ids.size() << " entries extracted to " << options.folder << '\n';
    }
}

void PrintChange(const ArchiveOptions& options, std::ostream& out, const char* done,
                 std::size_t count) {
    if (options.json) {
        JsonText json;
        json.BeginObject().Key("archive").Value(options.archive).Key(done).Count(count).End();
        out << json.Text();
    } else {
        out << count << " entries " << done << '\n';
    }
}

// The name of an entry as "folder/file". An entry of another form could not be extracted on every
// platform: part by part without the signs of drives, patterns and pipes, and not ending in a dot
// or a blank.
std::wstring CheckedEntryName(const std::string& folder, const std::string& file) {
    const std::u8string file_name = PathOf(file).filename().u8string();
    std::string name(file_name.begin(), file_name.end());
    if (!folder.empty()) {
        name.insert(0, folder + "/");
    }
    bool is_plain = name.find_first_of("\\:*?\"<>|") == std::string::npos;
    for (std::size_t begin = 0; is_plain && begin <= name.size();) {
        const std::size_t end = std::min(name.find('/', begin), name.size());
        is_plain = end > begin && name[end - 1] != '.' && name[end - 1] != ' ';
        begin = end + 1;
    }
    if (!is_plain) {
        throw Failure(Quoted(name) + " is no name for an entry (parts are separated by /)");
    }
    std::replace(name.begin(), name.end(), '/', '\\');
    return Wide(name);
}

void RunAdd(const ArchiveOptions& options, std::ostream& out) {
    std::vector<std::wstring> paths;
    std::vector<std::wstring> names;
    for (const std::string& file : options.files) {
        paths.push_back(CheckedPath(file));
        names.push_back(CheckedEntryName(options.below, file));
    }
    const bool is_new = sys::KindOfPath(Wide(options.archive)) == sys::PathKind::kNothing;
    Zip zip;
    OpenForUpdate(zip, options);
    for (std::size_t k = 0; k < paths.size(); ++k) {
        const std::wstring& name = names[k];
        Zip::Ids old;
        if (options.replace) {
            const auto is_same = [&name](const std::wstring& entry) { return entry == name; };
            Require(zip.FindAllMatching(old, is_same));
        }
        const gtl::status result =
            old.empty() ? zip.Add(paths[k], name) : zip.ReplaceAt(old.front(), paths[k], name);
        if (result.Failed()) {
            zip.Discard();
            if (is_new) {  // the empty archive that was made for it
                std::error_code ignored;
                std::filesystem::remove(PathOf(options.archive), ignored);
            }
            Require(result);
        }
    }
    CloseUpdate(zip);
    PrintChange(options, out, "added", paths.size());
}

void RunDelete(const ArchiveOptions& options, std::ostream& out) {
    static_cast<void>(CheckedPath(options.archive));
    Zip zip;
    OpenForUpdate(zip, options);
    const Zip::Ids ids = Matching(zip, options.pattern);
    Require(zip.Delete(ids));
    CloseUpdate(zip);
    PrintChange(options, out, "deleted", ids.size());
}

void RunComment(const ArchiveOptions& options, std::ostream& out) {
    const std::wstring path = CheckedPath(options.archive);
    std::wstring comment;
    if (options.comment.empty()) {
        Require(Zip::GetComment(sys::file::MakeSharedFileInputStream(path), comment));
    } else {
        Zip zip;
        OpenForUpdate(zip, options);
        comment = Wide(options.comment.front());
        const gtl::status result = zip.SetComment(comment);
        if (result.Failed()) {
            zip.Discard();
            Require(result);
        }
        CloseUpdate(zip);
    }
    if (options.json) {
        JsonText json;
        json.BeginObject().Key("archive").Value(options.archive);
        json.Key("comment").Value(Utf8(comment)).End();
        out << json.Text();
    } else {
        out << OneLine(Utf8(comment)) << '\n';  // it may be a stranger's
    }
}

// One command below `archive`, with the options that all have.
CLI::App* AddOne(CLI::App& archive, std::ostream& out, const char* name, const char* description,
                 void (*run)(const ArchiveOptions&, std::ostream&),
                 const std::function<void(CLI::App&, ArchiveOptions&)>& add_options) {
    const auto options = std::make_shared<ArchiveOptions>();
    CLI::App* const command = archive.add_subcommand(name, description);
    command->add_option("ARCHIVE", options->archive, "The project archive")
        ->required()
        ->type_name("");
    add_options(*command, *options);
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options, run, &out] { run(*options, out); });
    return command;
}

void AddPattern(CLI::App& command, ArchiveOptions& options, const char* description) {
    command.add_option("PATTERN", options.pattern, description)->type_name("");
}

void AddPassword(CLI::App& command, ArchiveOptions& options, const char* description) {
    command.add_option("--password", options.password, description)->type_name("TEXT");
}

}  // namespace

void AddArchive(CLI::App& program, std::ostream& out) {
    constexpr const char* kPattern =
        "Which entries: * stands for any characters, ? for one; all unless given";
    constexpr const char* kPassword = "The password of encrypted entries";
    CLI::App& archive =
        *program.add_subcommand("archive", "Look into project archives and change them");
    archive.require_subcommand(1);
    archive.footer("Exit codes: 0 done, 1 test found damage, 2 bad usage or refused.\n");
    AddOne(archive, out, "info", "Version, comment, number and size of the entries", &RunInfo,
           [](CLI::App&, ArchiveOptions&) {});
    AddOne(archive, out, "list", "The entries: size, packed size, name (* before encrypted ones)",
           &RunList, [&](CLI::App& command, ArchiveOptions& options) {
               AddPattern(command, options, kPattern);
           });
    AddOne(archive, out, "test", "Read entries to their end and check their sums", &RunTest,
           [&](CLI::App& command, ArchiveOptions& options) {
               AddPattern(command, options, kPattern);
               AddPassword(command, options, kPassword);
           });
    AddOne(archive, out, "extract", "Write entries to files below a folder", &RunExtract,
           [&](CLI::App& command, ArchiveOptions& options) {
               command.add_option("FOLDER", options.folder, "Where the files go")
                   ->required()
                   ->type_name("");
               AddPattern(command, options, kPattern);
               AddPassword(command, options, kPassword);
               command
                   .add_option("--max-bytes", options.most_bytes,
                               "Give up when the entries unpack to more than this")
                   ->type_name("N");
           });
    AddOne(archive, out, "add", "Add files, making the archive where there is none", &RunAdd,
           [](CLI::App& command, ArchiveOptions& options) {
               command.add_option("FILE", options.files, "The files")->required()->type_name("");
               command.add_option("--below", options.below, "The folder of the archive they go to")
                   ->type_name("NAME");
               command.add_flag("--replace", options.replace,
                                "Replace entries that are there already");
               AddPassword(command, options, "Encrypt them (AES-256)");
           });
    AddOne(archive, out, "delete", "Delete entries", &RunDelete,
           [](CLI::App& command, ArchiveOptions& options) {
               command.add_option("PATTERN", options.pattern, "Which entries, as for list")
                   ->required()
                   ->type_name("");
           });
    AddOne(archive, out, "comment", "Print the archive's comment, or set it", &RunComment,
           [](CLI::App& command, ArchiveOptions& options) {
               command.add_option("TEXT", options.comment, "The new comment")
                   ->expected(0, 1)
                   ->type_name("");
           });
}

}  // namespace lmw::tool
