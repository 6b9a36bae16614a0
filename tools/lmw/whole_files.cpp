#include "tools/lmw/whole_files.h"

#include "tools/lmw/failure.h"
#include "tools/lmw/text.h"

#include <cstddef>
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
    const auto is_same = [](const std::string& a, const std::string& b) {
        std::error_code error;
        const fs::path path = fs::weakly_canonical(PathOf(a), error);
        return !error && path == fs::weakly_canonical(PathOf(b), error) && !error;
    };
    for (std::size_t k = 0; k < files.size(); ++k) {
        if (!input.empty() && is_same(files[k].name, input)) {
            throw Failure(files[k].name + ": is the input, which results may not replace");
        }
        for (std::size_t other = 0; other < k; ++other) {
            if (files[other].name == files[k].name) {
                throw Failure(files[k].name + ": two results go to this file");
            }
        }
    }
    PartFiles parts;
    for (const OutputFile& file : files) {
        parts.Write(file);
    }
    parts.Rename();
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
