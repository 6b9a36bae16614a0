#include "common/fn/fn_kind.h"

#include "common/fn/fn_error.h"

FnKind::~FnKind() = default;

std::wstring FnKind::Name() const {
    return name_.empty() ? KindName() : name_;
}

void FnKind::SetInputParam(DataParamType param) {
    input_param_ = param;
    DefinitionChanged();
}

void FnKind::SetOutputParam(DataParamType param) {
    output_param_ = param;
    DefinitionChanged();
}

void FnKind::RegisterIdentity_(lmw::fn::AttributeDictionary& dictionary) {
    dictionary.RegisterMember_(FnAttrName(), &FnKind::Name, &FnKind::SetName);
    dictionary.RegisterMember_(FnAttrDescription(), &FnKind::Description, &FnKind::SetDescription);
    dictionary.RegisterMember_(FnAttrFullDescription(), &FnKind::FullDescription,
                               &FnKind::SetFullDescription);
}

void FnKind::RegisterParams_(lmw::fn::AttributeDictionary& dictionary) {
    dictionary.RegisterMember_(FnAttrInputParam(), &FnKind::InputParam, &FnKind::SetInputParam);
    dictionary.RegisterMember_(FnAttrOutputParam(), &FnKind::OutputParam, &FnKind::SetOutputParam);
}

gtl::status FnKind::UnableToComputeValue_() const {
    return lmw::fn::error::UnableToComputeValue(Name(), description_, {});
}
