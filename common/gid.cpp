#include "common/gid.h"

#include <algorithm>
#include <array>

namespace lmw::gid {

namespace {

constexpr unsigned kInstanceShift = 24;
constexpr GID kContainerMask = (GID{1} << kInstanceShift) - 1;

// Container types that belong to geometry; the first few of them make up the mesh.
constexpr GID kFirstGeometryContainer = 150;
constexpr GID kLastMeshContainer = 154;
constexpr GID kLastGeometryContainer = 174;
constexpr std::array<GID, 3> kOtherMeshContainers = {4, 8, 159};

constexpr std::array<GID, 3> kTimeTables = {1005, 1068, 1069};

struct TablePair {
    GID local;
    GID global;
};
constexpr std::array<TablePair, 10> kTables = {{{1000, 1048},
                                                {1001, 1057},
                                                {1002, 1054},
                                                {1003, 1056},
                                                {1004, 1055},
                                                {1028, 1049},
                                                {1029, 1050},
                                                {1030, 1051},
                                                {1031, 1052},
                                                {1032, 1053}}};

bool IsGeometryContainer(GID id) {
    return id >= kFirstGeometryContainer && id <= kLastGeometryContainer;
}

template <std::size_t n>
bool Contains(const std::array<GID, n>& ids, GID id) {
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

}  // namespace

ContainerRef::ContainerRef(const GGID& enclosing, GID container) noexcept
    : packed_((container & kContainerMask) | (enclosing.instance << kInstanceShift)) {}

GGID ContainerRef::EnclosingRecordId() const noexcept {
    const std::uint32_t instance = packed_ >> kInstanceShift;
    if (instance == 0) {
        return {};
    }
    return {IsGeometryContainer(packed_ & kContainerMask) ? kGeometryRecord : kAnalysisRecord,
            instance};
}

GID PackedContainerGID(const GGID& enclosing, GID container) noexcept {
    return ContainerRef(enclosing, container).Packed();
}

GID UnpackedContainerGID(GID id) noexcept {
    return id & kContainerMask;
}

GID ContainerEnclosingContainerId(GID id) noexcept {
    return IsGeometryContainer(id) ? kGeometryRecord : kAnalysisRecord;
}

bool IsNestedContainerId(GID id) noexcept {
    const GGID enclosing = ContainerRef(id).EnclosingRecordId();
    return enclosing.type != 0 && enclosing.instance != 0;
}

bool IsNestedGeometryContainerId(GID id) noexcept {
    return IsNestedContainerId(id) && IsGeometryContainer(UnpackedContainerGID(id));
}

bool IsNestedAnalysisContainerId(GID id) noexcept {
    return IsNestedContainerId(id) && !IsGeometryContainer(UnpackedContainerGID(id));
}

bool IsContainerObjectId(const GGID& id) noexcept {
    return id.instance == kContainerObject;
}

bool IsMeshChangedContainerGID(GID id) noexcept {
    const GID container = UnpackedContainerGID(id);
    return (container >= kFirstGeometryContainer && container <= kLastMeshContainer) ||
           Contains(kOtherMeshContainers, container);
}

bool IsTimeTable(GID id) noexcept {
    return Contains(kTimeTables, id);
}

GID LocalIdToGlobalId(GID id) noexcept {
    const auto* const found = std::find_if(
        kTables.begin(), kTables.end(), [id](const TablePair& pair) { return pair.local == id; });
    return found != kTables.end() ? found->global : id;
}

}  // namespace lmw::gid
