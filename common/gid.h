#pragma once

// Identifiers of project data: record types, record instances, and containers packed together with
// the record that encloses them. The file holds the fixed classification and mapping rules over
// them.

#include "common/export.h"

#include <cstdint>

/// A record type: a table, a container, an object kind. In a packed container identifier bits 0-23
/// hold the container's own type and bits 24-31 the low byte of the enclosing record's instance, 0
/// when the container is not nested.
using GID = std::uint32_t;

/// One record: its type and its instance number within that type. Default: (0, 0), no record.
struct GGID {
    GID type = 0;
    std::uint32_t instance = 0;

    friend constexpr bool operator==(const GGID&, const GGID&) = default;
};

namespace lmw::gid {

/// The instance that stands for the container object itself rather than for one of its members.
inline constexpr std::uint32_t kContainerObject = 0xFFFFFFFEU;

/// The type of the analysis record that encloses nested analysis containers.
inline constexpr GID kAnalysisRecord = 8;

/// The type of the geometry record that encloses nested geometry containers.
inline constexpr GID kGeometryRecord = 116;

/// A container identifier packed with the instance of the record that encloses it.
class LMW_API ContainerRef {
 public:
    /// Bits 0-23 of `container`, and the low byte of the enclosing record's instance above them.
    /// The enclosing record's type is not kept: it follows from the container.
    ContainerRef(const GGID& enclosing, GID container) noexcept;

    /// Takes a packed identifier apart again.
    explicit constexpr ContainerRef(GID packed) noexcept : packed_(packed) {}

    [[nodiscard]] constexpr GID Packed() const noexcept { return packed_; }

    /// The enclosing record: (0, 0) when the container is not nested, else the geometry record for
    /// the containers of geometry and the analysis record for all others.
    [[nodiscard]] GGID EnclosingRecordId() const noexcept;

 private:
    GID packed_;
};

/// ContainerRef as a plain identifier.
LMW_API GID PackedContainerGID(const GGID& enclosing, GID container) noexcept;

/// `id` without the enclosing record's instance (bits 24-31 cleared).
LMW_API GID UnpackedContainerGID(GID id) noexcept;

/// The type of the record that encloses the container type `id`: geometry's containers 150 to 174
/// give kGeometryRecord, all others kAnalysisRecord. By design: the whole value is tested, so a
/// packed identifier whose top byte is not 0 gives kAnalysisRecord, unlike
/// ContainerRef::EnclosingRecordId; callers that pass packed identifiers rely on it.
LMW_API GID ContainerEnclosingContainerId(GID id) noexcept;

/// Whether the packed identifier names a container within an enclosing record.
LMW_API bool IsNestedContainerId(GID id) noexcept;
/// Nested, and within the geometry record.
LMW_API bool IsNestedGeometryContainerId(GID id) noexcept;
/// Nested, and within the analysis record.
LMW_API bool IsNestedAnalysisContainerId(GID id) noexcept;

/// Whether `id` stands for a container object itself.
LMW_API bool IsContainerObjectId(const GGID& id) noexcept;

/// Whether a change of this container, packed or not, means that the mesh has changed.
LMW_API bool IsMeshChangedContainerGID(GID id) noexcept;

/// Whether `id` is a time table.
/// By design: the whole value is tested, so a packed identifier whose top byte is not 0 is none.
LMW_API bool IsTimeTable(GID id) noexcept;

/// Maps the local table identifiers of a nested analysis to their project-wide counterparts; every
/// other value comes back unchanged.
LMW_API GID LocalIdToGlobalId(GID id) noexcept;

}  // namespace lmw::gid
