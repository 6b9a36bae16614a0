#include "tools/lmw/whole_files.h"

#include "tools/lmw/failure.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <system_error>

namespace lmw::tool {
namespace {

namespace fs = std::filesystem;

void WriteThrough(const fs::path& path, const OutputFile& file) {
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(file.content.data(), static_cast<std::streamsize>(file.content.size()));
    stream.close();
    if (!stream) {
        throw Failure(file.name + ": cannot be written");
    }
}

// The temporary files of one call: those that were not renamed go with it.
class PartFiles {
 public:
    PartFiles() = default;
    PartFiles(const PartFiles&) = delete;
    PartFiles& operator=(const PartFiles&) = delete;
    ~PartFiles() {
        for (const Part& part : parts_) {
            std::error_code ignored;
            fs::remove(part.temporary, ignored);
        }
    }

    void Write(const OutputFile& file) {
        std::error_code error;
        fs::path target = PathOf(file.name);
        if (fs::is_directory(target, error)) {
            throw Failure(file.name + ": is a folder");
        }
        if (fs::exists(target, error)) {
            if (!fs::is_regular_file(target, error)) {
                WriteThrough(target, file);
                return;
            }
            target = fs::canonical(target);  // a link stays a link
        }
        fs::path temporary = target;
        temporary += ".lmw-part";
        parts_.push_back({temporary, target, file.name});
        WriteThrough(temporary, file);
    }

    void Rename() {
        for (const Part& part : parts_) {
            std::error_code error;
            fs::rename(part.temporary, part.target, error);
            if (error) {
                throw Failure(part.name + ": cannot be replaced");
            }
        }
        parts_.clear();
    }

 private:
    struct Part {
        fs::path temporary;
        fs::path target;
        std::string name;
    };
    std::vector<Part> parts_;
};

// Where a file is, or will be, whatever its name goes through.
fs::path PlaceOf(const std::string& file) {
    std::error_code error;
    fs::path place = fs::weakly_canonical(PathOf(file), error);
    if (error) {
        return PathOf(file);
    }
    return place.has_filename() ? place : place.parent_path();  // a folder's closing separator
}

}  // namespace

std::string ReadWholeFile(const std::string& file) {
    const fs::path path = PathOf(file);
    std::error_code error;
    if (!fs::exists(path, error)) {
        throw Failure(file + ": no such file");
    }
    if (fs::is_directory(path, error)) {
        throw Failure(file + ": is a folder");
    }
    std::ifstream stream(path, std::ios::binary);
    std::string content(std::istreambuf_iterator<char>(stream), {});
    if (!stream) {
        throw Failure(file + ": cannot be read");
    }
    return content;
}

void WriteFiles(const std::vector<OutputFile>& files, const std::string& input) {
    std::vector<fs::path> places;
    const fs::path input_place = input.empty() ? fs::path() : PlaceOf(input);
    for (const OutputFile& file : files) {
        const fs::path place = PlaceOf(file.name);
        if (!input.empty() && place == input_place) {
            throw Failure(file.name + ": is the input, which results may not replace");
        }
        if (std::find(places.begin(), places.end(), place) != places.end()) {
            throw Failure(file.name + ": two results go to this file");
        }
        places.push_back(place);
    }
    PartFiles parts;
    for (const OutputFile& file : files) {
        parts.Write(file);
    }
    parts.Rename();
}

bool IsSamePlace(const std::string& a, const std::string& b) {
    return PlaceOf(a) == PlaceOf(b);
}

void MakeFolder(const std::string& folder) {
    std::error_code error;
    const fs::path path = PathOf(folder);
    fs::create_directories(path, error);
    if (!fs::is_directory(path, error)) {
        throw Failure(folder + ": the folder cannot be made");
    }
}

}  // namespace lmw::tool
