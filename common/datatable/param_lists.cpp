#include "common/datatable/param_lists.h"

#include <algorithm>
#include <bitset>
#include <iterator>

namespace dataparamtype {

namespace {

class Members {
 public:
    explicit Members(const DataParamList& list) {
        for (const DataParamType param : list) {
            if (IndexOf(param) < kParamCount) {
                members_.set(IndexOf(param));
            }
        }
    }

    [[nodiscard]] bool Has(DataParamType param) const {
        return IndexOf(param) < kParamCount && members_.test(IndexOf(param));
    }

 private:
    std::bitset<kParamCount> members_;
};

}  // namespace

DataParamList ListIntersection(const DataParamList& a, const DataParamList& b) {
    DataParamList common;
    if (a.empty() || b.empty()) {
        return common;
    }
    const Members in_a(a);
    std::copy_if(b.begin(), b.end(), std::back_inserter(common),
                 [&in_a](DataParamType param) { return in_a.Has(param); });
    return common;
}

DataParamList ListDifference(const DataParamList& a, const DataParamList& b) {
    const Members in_b(b);
    DataParamList rest;
    std::copy_if(a.begin(), a.end(), std::back_inserter(rest),
                 [&in_b](DataParamType param) { return !in_b.Has(param); });
    return rest;
}

DataParamList ListUnion(const DataParamList& a, const DataParamList& b) {
    DataParamList all = a;
    const DataParamList beyond_a = ListDifference(b, a);
    all.insert(all.end(), beyond_a.begin(), beyond_a.end());
    return all;
}

}  // namespace dataparamtype
