#include "common/log_category.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using namespace lmw::diag;

// Before the first test: a static initialiser registers.
const DeclareCategoryMask kDeclared("category.declared");

TEST(LogCategory, HasOneBitOfItsOwnFrom8OnForEachName) {
    const int a = MakeCategoryMask("category.a");
    const int b = MakeCategoryMask("category.b");
    EXPECT_NE(a, b);
    for (const int mask : {a, b, kDeclared.Mask()}) {
        EXPECT_GE(mask, 8);
        EXPECT_EQ(mask & (mask - 1), 0);
    }
    EXPECT_EQ(MakeCategoryMask("category.a"), a);
    EXPECT_NE(MakeCategoryMask("category.A"), a);
    EXPECT_EQ(MakeCategoryMask("category.declared"), kDeclared.Mask());
    EXPECT_EQ(kDeclared.Name(), "category.declared");
}

TEST(LogCategory, ListsJoinTheirBitsAndSkipEmptyPieces) {
    const int a = MakeCategoryMask("category.a");
    const int b = MakeCategoryMask("category.b");
    for (const char* list : {"category.a;category.b", "category.b;category.a",
                             ";category.a;;category.b;", "category.a;category.b;category.a"}) {
        EXPECT_EQ(MakeCategoryMask(list), a | b) << list;
    }
    const std::size_t registered = RegisteredCategories().size();
    EXPECT_EQ(MakeCategoryMask(""), 0);
    EXPECT_EQ(MakeCategoryMask(";;"), 0);
    EXPECT_EQ(RegisteredCategories().size(), registered);
}

TEST(LogCategory, NamesComeInTheOrderOfRegistration) {
    const int b = MakeCategoryMask("category.order2");
    const int a = MakeCategoryMask("category.order1");
    EXPECT_EQ(CategoryNames(a), "category.order1");
    EXPECT_EQ(CategoryNames(a | b), "category.order2;category.order1");
    EXPECT_EQ(CategoryNames(a | 3), "category.order1");
    EXPECT_EQ(CategoryNames(1 << 30), "");
}

TEST(LogCategory, AllIsTheOnlyMaskBelow8WithANameOfItsOwn) {
    EXPECT_EQ(CategoryNames(-1), "all");
    for (const int mask : {0, 1, 3, 4, 7, -2, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(CategoryNames(mask), "") << mask;
    }
    // On the way in "all" is a name like any other.
    EXPECT_EQ(CategoryNames(MakeCategoryMask("all")), "all");
    EXPECT_NE(MakeCategoryMask("all"), kAllCategories);
}

}  // namespace
