// The archive against the work that cannot be saved: adding against zlib's deflate of the same
// bytes, extracting against the archive library itself, the version of a project against opening
// it. Compare medians of one run with interleaved repetitions.

#include "common/file/lwz_version.h"
#include "common/file/zip.h"

#include <benchmark/benchmark.h>
#include <zip.h>
#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

using sys::file::Zip;
using sys::file::zip::CompactMode;
namespace fs = std::filesystem;

// What results look like: lines of numbers, of which about 60 % pack away.
std::string Results(std::size_t size, unsigned seed) {
    std::mt19937 engine(seed);
    std::string text;
    text.reserve(size + 40);
    for (unsigned node = 0; text.size() < size; ++node) {
        text += std::to_string(node) + "," +
                std::to_string(static_cast<double>(engine()) / 65536.0) + ",0.000000\n";
    }
    text.resize(size);
    return text;
}

struct Shape {
    const char* name;
    std::size_t files;
    std::size_t size;
};
constexpr Shape kShapes[] = {{"1000x10kB", 1000, 10'000}, {"1x200MB", 1, 200'000'000}};

// The files of a shape and an archive of them, made once.
struct Input {
    fs::path folder;
    std::vector<std::wstring> files;
    std::vector<std::string> contents;

    [[nodiscard]] std::wstring Path(const char* name) const {
        const std::string path = (folder / name).string();
        return {path.begin(), path.end()};
    }
};

const Input& InputOf(const Shape& shape) {
    static std::vector<Input> inputs(std::size(kShapes));
    Input& input = inputs[static_cast<std::size_t>(&shape - kShapes)];
    if (input.files.empty()) {
        input.folder = fs::temp_directory_path() / ("lmw-bench-" + std::string(shape.name));
        fs::create_directories(input.folder);
        Zip zip;
        zip.Open(input.Path("all.lwz"), CompactMode::Never).Ignore();
        for (std::size_t k = 0; k < shape.files; ++k) {
            input.contents.push_back(Results(shape.size, static_cast<unsigned>(k)));
            const std::string name = std::to_string(k);
            std::ofstream(input.folder / name, std::ios::binary) << input.contents.back();
            input.files.push_back(input.Path(name.c_str()));
            zip.Add(input.files.back(), input.files.back()).Ignore();
        }
        zip.Close().Ignore();
    }
    return input;
}

void Counted(benchmark::State& state, const Shape& shape) {
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(shape.files * shape.size));
}

// Everything a caller waits for: reading the files, packing, and the new archive in its place.
void Add(benchmark::State& state, const Shape& shape) {
    const Input& input = InputOf(shape);
    for (auto _ : state) {
        fs::remove(input.folder / "new.lwz");
        Zip zip;
        bool good = zip.Open(input.Path("new.lwz"), CompactMode::Never).Succeeded();
        for (const std::wstring& file : input.files) {
            good = good && zip.Add(file, file).Succeeded();
        }
        if (!good || zip.Close().Failed()) {
            state.SkipWithError("not added");
            return;
        }
    }
    Counted(state, shape);
}

void ZlibDeflate(benchmark::State& state, const Shape& shape) {
    const Input& input = InputOf(shape);
    std::vector<Bytef> packed(1U << 20);
    for (auto _ : state) {
        for (const std::string& content : input.contents) {
            z_stream stream{};
            deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
            stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
            stream.avail_in = static_cast<uInt>(content.size());
            do {
                stream.next_out = packed.data();
                stream.avail_out = static_cast<uInt>(packed.size());
            } while (deflate(&stream, Z_FINISH) == Z_OK);
            deflateEnd(&stream);
        }
        benchmark::DoNotOptimize(packed.data());
    }
    Counted(state, shape);
}

void Extract(benchmark::State& state, const Shape& shape) {
    const Input& input = InputOf(shape);
    Zip zip;
    zip.OpenReadOnly(sys::file::MakeFileInputStream(input.Path("all.lwz"))).Ignore();
    for (auto _ : state) {
        for (const Zip::Id id : zip.GetAllFileIDs()) {
            Zip::Bytes bytes;
            if (zip.Extract(id, bytes).Failed()) {
                state.SkipWithError("not extracted");
                return;
            }
            benchmark::DoNotOptimize(bytes.data());
        }
    }
    Counted(state, shape);
}

void LibzipExtract(benchmark::State& state, const Shape& shape) {
    const Input& input = InputOf(shape);
    zip_t* const archive =
        zip_open((input.folder / "all.lwz").string().c_str(), ZIP_RDONLY, nullptr);
    for (auto _ : state) {
        for (std::size_t k = 0; k < shape.files; ++k) {
            zip_stat_t stat;
            zip_stat_index(archive, k, 0, &stat);
            std::vector<std::byte> bytes(stat.size);
            zip_file_t* const entry = zip_fopen_index(archive, k, 0);
            zip_fread(entry, bytes.data(), bytes.size());
            std::byte more{};
            zip_fread(entry, &more, 1);  // the end, where the sum is checked
            zip_fclose(entry);
            benchmark::DoNotOptimize(bytes.data());
        }
    }
    zip_discard(archive);
    Counted(state, shape);
}

void ZlibInflate(benchmark::State& state, const Shape& shape) {
    const Input& input = InputOf(shape);
    std::vector<std::vector<Bytef>> packed;
    for (const std::string& content : input.contents) {
        z_stream stream{};
        deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
        std::vector<Bytef>& one = packed.emplace_back(deflateBound(&stream, content.size()));
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
        stream.avail_in = static_cast<uInt>(content.size());
        stream.next_out = one.data();
        stream.avail_out = static_cast<uInt>(one.size());
        deflate(&stream, Z_FINISH);
        one.resize(stream.total_out);
        deflateEnd(&stream);
    }
    for (auto _ : state) {
        for (std::vector<Bytef>& one : packed) {
            std::vector<Bytef> bytes(shape.size);
            z_stream stream{};
            inflateInit2(&stream, -15);
            stream.next_in = one.data();
            stream.avail_in = static_cast<uInt>(one.size());
            stream.next_out = bytes.data();
            stream.avail_out = static_cast<uInt>(bytes.size());
            inflate(&stream, Z_FINISH);
            inflateEnd(&stream);
            benchmark::DoNotOptimize(bytes.data());
        }
    }
    Counted(state, shape);
}

// Telling the version of a project of 1000 entries, with and without a comment.
const Input& ProjectWithVersion() {
    static const Input& input = [&]() -> const Input& {
        const Input& files = InputOf(kShapes[0]);
        fs::copy_file(files.folder / "all.lwz", files.folder / "version.lwz",
                      fs::copy_options::overwrite_existing);
        Zip zip;
        zip.Open(files.Path("version.lwz"), CompactMode::Never).Ignore();
        zip.SetComment(L"8.1").Ignore();
        zip.Close().Ignore();
        return files;
    }();
    return input;
}

void GetLwzVersion(benchmark::State& state, const char* archive) {
    const sys::file::InputStream stream =
        sys::file::MakeFileInputStream(ProjectWithVersion().Path(archive));
    for (auto _ : state) {
        benchmark::DoNotOptimize(doc::file::GetLwzVersion(stream));
    }
}

void GetComment(benchmark::State& state, const char* archive) {
    const sys::file::InputStream stream =
        sys::file::MakeFileInputStream(ProjectWithVersion().Path(archive));
    for (auto _ : state) {
        benchmark::DoNotOptimize(Zip::GetComment(stream));
    }
}

void LibzipOpen(benchmark::State& state, const char* archive) {
    const std::string path = (ProjectWithVersion().folder / archive).string();
    for (auto _ : state) {
        zip_t* const opened = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
        benchmark::DoNotOptimize(zip_get_archive_comment(opened, nullptr, 0));
        zip_discard(opened);
    }
}

BENCHMARK_CAPTURE(Add, 1000x10kB, kShapes[0])->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ZlibDeflate, 1000x10kB, kShapes[0])->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Extract, 1000x10kB, kShapes[0])->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LibzipExtract, 1000x10kB, kShapes[0])->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ZlibInflate, 1000x10kB, kShapes[0])->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Add, 1x200MB, kShapes[1])->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ZlibDeflate, 1x200MB, kShapes[1])->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Extract, 1x200MB, kShapes[1])->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LibzipExtract, 1x200MB, kShapes[1])->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ZlibInflate, 1x200MB, kShapes[1])->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(GetLwzVersion, comment, "version.lwz")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(GetLwzVersion, no_comment, "all.lwz")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(GetComment, comment, "version.lwz")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(LibzipOpen, comment, "version.lwz")->Unit(benchmark::kMicrosecond);

}  // namespace
