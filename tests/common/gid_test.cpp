#include "common/gid.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>
#include <vector>

namespace {

using namespace lmw::gid;

TEST(ContainerRef, PacksTheLowByteOfTheEnclosingInstance) {
    EXPECT_EQ(PackedContainerGID({8, 0x1234}, 151), 0x34000097U);
    EXPECT_EQ(PackedContainerGID({8, 0x1200}, 151), 151U);
    EXPECT_EQ(PackedContainerGID({116, 0xFF}, 0xAB000097U), 0xFF000097U);
    EXPECT_EQ(UnpackedContainerGID(0x34000097U), 151U);
}

TEST(ContainerRef, EnclosingRecordFollowsFromTheContainer) {
    for (const auto& [packed, expected] :
         std::vector<std::pair<GID, GGID>>{{0x34000097U, {116, 0x34}},
                                           {0x34000020U, {8, 0x34}},
                                           {0x01000000U + 149, {8, 1}},
                                           {0x01000000U + 150, {116, 1}},
                                           {0x01000000U + 174, {116, 1}},
                                           {0x01000000U + 175, {8, 1}},
                                           {0xFF0000AEU, {116, 0xFF}},
                                           {151, {0, 0}},
                                           {0, {0, 0}}}) {
        EXPECT_EQ(ContainerRef(packed).EnclosingRecordId(), expected) << packed;
        EXPECT_EQ(IsNestedContainerId(packed), expected.instance != 0) << packed;
        EXPECT_EQ(IsNestedGeometryContainerId(packed), expected.type == 116) << packed;
        EXPECT_EQ(IsNestedAnalysisContainerId(packed), expected.type == 8) << packed;
    }
}

// By design: unlike EnclosingRecordId, these two look at the whole value.
TEST(ContainerRef, EnclosingContainerAndTimeTableTestTheWholeValue) {
    EXPECT_EQ(ContainerEnclosingContainerId(151), 116U);
    EXPECT_EQ(ContainerEnclosingContainerId(175), 8U);
    EXPECT_EQ(ContainerEnclosingContainerId(0x34000097U), 8U);

    for (const GID table : {1005U, 1068U, 1069U}) {
        EXPECT_TRUE(IsTimeTable(table));
        EXPECT_FALSE(IsTimeTable(table | 0x01000000U));
    }
    EXPECT_FALSE(IsTimeTable(1004));
}

TEST(Gid, ContainerObjectIsMarkedByItsInstance) {
    EXPECT_TRUE(IsContainerObjectId({150, 0xFFFFFFFEU}));
    EXPECT_FALSE(IsContainerObjectId({150, 0xFFFFFFFFU}));
    EXPECT_FALSE(IsContainerObjectId({0xFFFFFFFEU, 1}));
}

TEST(Gid, MeshChangesAreSeenPackedOrNot) {
    const std::set<GID> mesh = {4, 8, 150, 151, 152, 153, 154, 159};
    for (GID id = 0; id < 300; ++id) {
        EXPECT_EQ(IsMeshChangedContainerGID(id), mesh.contains(id)) << id;
        EXPECT_EQ(IsMeshChangedContainerGID(id | 0x7F000000U), mesh.contains(id)) << id;
    }
}

TEST(Gid, LocalTablesHaveGlobalCounterparts) {
    const std::vector<std::pair<GID, GID>> rows = {
        {1000, 1048}, {1001, 1057}, {1002, 1054}, {1003, 1056}, {1004, 1055},
        {1005, 1005}, {999, 999},   {1027, 1027}, {1028, 1049}, {1029, 1050},
        {1030, 1051}, {1031, 1052}, {1032, 1053}, {1033, 1033}, {0x010003E8U, 0x010003E8U}};
    for (const auto& [local, global] : rows) {
        EXPECT_EQ(LocalIdToGlobalId(local), global) << local;
    }
}

}  // namespace
