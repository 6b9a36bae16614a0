#include "common/fn/ifn.h"

#include "common/datatable/deep_table_context.h"
#include "common/fn/evaluate.h"
#include "common/fn/fn_undefined.h"

FnImpl& IFn::pImpl_mutable() {
    if (!impl_) {
        return FnUndefined_();
    }
    if (impl_->ReferenceCount() >= 2 && !lmw::fn::impl::IsUndefined(impl_.get())) {
        *this = IFn(impl_->Clone());
    }
    return *impl_;
}

gtl::status IFn::UpdateCalculatedValues() {
    return pImpl().IsUpToDate() ? gtl::status() : pImpl_mutable().UpdateCalculatedValues();
}

gtl::status IFn::InitializeInstance(GID owner, GID table) {
    if (dynamic_cast<const IDeepTableContext*>(&pImpl()) == nullptr) {
        return {};
    }
    gtl::status result =
        dynamic_cast<IDeepTableContext&>(pImpl_mutable()).InitializeInstance(owner, table);
    return result.Succeeded() ? UpdateCalculatedValues() : result;
}

FnUndefined& IFn::FnUndefined_() {
    thread_local const gtl::handle<FnUndefined, gtl::handle_mgmt_refcounted> undefined(
        lmw::fn::CreateUndefined({}, {}).release());
    return *undefined;
}

const FnImpl& IFn::UndefinedImpl_() {
    return FnUndefined_();
}
