#include "common/fn/attribute_dictionary.h"

#include "common/errors.h"

#include <utility>

namespace lmw::fn {

using attribute::storage::Type;

IAttributeDictionary::~IAttributeDictionary() = default;

AttributeDictionary::AttributeDictionary(const IAttributeDictionary* base) : base_(base) {}

AttributeDictionary::~AttributeDictionary() = default;

unsigned AttributeDictionary::RegisterAttribute_(const FnAttr& attribute, Type type, Getter getter,
                                                 Setter setter, DataParamType param) {
    const auto id = static_cast<unsigned>(entries_.size());
    const bool editable = setter != nullptr;
    entries_.push_back({attribute, type, param, editable, std::move(getter), std::move(setter)});
    if (!attribute.key.empty()) {
        ids_[attribute.key] = id;
    }
    if (entries_.size() == kFirstDefinitionAttribute && base_ != nullptr &&
        base_->EndAttributeID() > kFirstDefinitionAttribute) {
        entries_.resize(base_->EndAttributeID());
    }
    return id;
}

bool AttributeDictionary::IsOfBase_(unsigned id) const {
    return id >= kFirstDefinitionAttribute && base_ != nullptr && id < base_->EndAttributeID();
}

const AttributeDictionary::Entry_* AttributeDictionary::Find_(unsigned id) const {
    return id < entries_.size() ? &entries_[id] : nullptr;
}

unsigned AttributeDictionary::EndAttributeID() const {
    return static_cast<unsigned>(entries_.size());
}

unsigned AttributeDictionary::AttributeIDOf(DataParamType param) const {
    if (param == DataParamType::Null) {
        return kNoAttribute;
    }
    for (std::size_t id = 0; id < entries_.size(); ++id) {
        if (entries_[id].param == param) {
            return static_cast<unsigned>(id);
        }
    }
    return base_ != nullptr ? base_->AttributeIDOf(param) : kNoAttribute;
}

unsigned AttributeDictionary::AttributeIDOf(const std::string& key) const {
    if (key.empty()) {
        return kNoAttribute;
    }
    const auto found = ids_.find(key);
    if (found != ids_.end()) {
        return found->second;
    }
    return base_ != nullptr ? base_->AttributeIDOf(key) : kNoAttribute;
}

Type AttributeDictionary::TypeByAttributeID(unsigned id) const {
    if (IsOfBase_(id)) {
        return base_->TypeByAttributeID(id);
    }
    const Entry_* const entry = Find_(id);
    return entry != nullptr ? entry->type : attribute::storage::None;
}

std::string AttributeDictionary::NameByAttributeID(unsigned id) const {
    if (IsOfBase_(id)) {
        return base_->NameByAttributeID(id);
    }
    const Entry_* const entry = Find_(id);
    return entry != nullptr ? entry->attribute.key : std::string();
}

DataParamType AttributeDictionary::ParamByAttributeID(unsigned id) const {
    if (IsOfBase_(id)) {
        return base_->ParamByAttributeID(id);
    }
    const Entry_* const entry = Find_(id);
    return entry != nullptr ? entry->param : DataParamType::Null;
}

bool AttributeDictionary::IsEditableByAttributeID(unsigned id) const {
    if (IsOfBase_(id)) {
        return base_->IsEditableByAttributeID(id);
    }
    const Entry_* const entry = Find_(id);
    return entry != nullptr && entry->editable;
}

gtl::status AttributeDictionary::ValueOf(const FnImpl* function, unsigned id, void* out) const {
    if (IsOfBase_(id)) {
        return base_->ValueOf(function, id, out);
    }
    const Entry_* const entry = Find_(id);
    if (entry == nullptr) {
        return error::OperationNotSupported();
    }
    if (!entry->getter) {
        return LmwError::internal("an attribute without a getter was read", __FILE__, __LINE__);
    }
    return entry->getter(out, function);
}

gtl::status AttributeDictionary::SetValueOf(FnImpl* function, unsigned id, const void* in) const {
    if (IsOfBase_(id)) {
        return base_->SetValueOf(function, id, in);
    }
    const Entry_* const entry = Find_(id);
    if (entry == nullptr || !entry->setter) {
        return error::OperationNotSupported();
    }
    gtl::status result = entry->setter(function, in);
    if (result.Succeeded() && id >= kFirstDefinitionAttribute) {
        function->DefinitionChanged();
    }
    return result;
}

gtl::status AttributeDictionary::PersistedValueOf(const FnImpl* function, unsigned id,
                                                  void* out) const {
    return IsOfBase_(id) ? base_->PersistedValueOf(function, id, out) : ValueOf(function, id, out);
}

gtl::status AttributeDictionary::SetPersistedValueOf(FnImpl* function, unsigned id,
                                                     const void* in) const {
    return IsOfBase_(id) ? base_->SetPersistedValueOf(function, id, in)
                         : SetValueOf(function, id, in);
}

}  // namespace lmw::fn
