#include "common/file/detail/archive_summary.h"

#include "common/file/detail/archive_reader.h"
#include "common/file/detail/archive_text.h"
#include "common/file/detail/central_directory.h"
#include "common/file/detail/guarded.h"

namespace lmw::file::detail {

gtl::status ReadSummary(const sys::file::InputStream& stream, ArchiveSummary& summary) {
    return Guarded([&]() -> gtl::status {
        OrdinaryDirectory directory;
        if (stream && directory.Read(*stream)) {
            summary.comment = WideFromArchive(directory.Comment());
            summary.host_system = directory.HostSystem();
            return {};
        }
        ArchiveReader reader;
        gtl::status opened = reader.Open(stream);
        if (opened.Succeeded()) {
            summary.comment = WideFromArchive(reader.Comment());
            summary.host_system = reader.HostSystem();
        }
        return opened;
    });
}

}  // namespace lmw::file::detail
