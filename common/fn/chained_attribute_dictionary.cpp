#include "common/fn/chained_attribute_dictionary.h"

namespace lmw::fn {

using attribute::storage::Type;

ChainedAttributeDictionary::~ChainedAttributeDictionary() = default;

unsigned ChainedAttributeDictionary::EndAttributeID() const {
    const unsigned inner_end = inner_->EndAttributeID();
    const unsigned outer_end = outer_ != nullptr ? outer_->EndAttributeID() : 0;
    return outer_end > 0 ? inner_end + outer_end - 1 : inner_end;
}

ChainedAttributeDictionary::Place_ ChainedAttributeDictionary::PlaceOf_(unsigned id) const {
    const unsigned inner_end = inner_->EndAttributeID();
    if (id < inner_end) {
        return {inner_, id};
    }
    return id < EndAttributeID() ? Place_{outer_, id - inner_end + 1} : Place_{};
}

// Unknown is tested before adding, which would wrap around; outer identifier 0 has no place in the
// chain, and adding would make it an inner one.
unsigned ChainedAttributeDictionary::FromOuter_(unsigned outer_id) const {
    if (outer_id == kNoAttribute || outer_id == 0) {
        return kNoAttribute;
    }
    return outer_id + inner_->EndAttributeID() - 1;
}

unsigned ChainedAttributeDictionary::AttributeIDOf(DataParamType param) const {
    if (param == DataParamType::Null) {
        return kNoAttribute;
    }
    const unsigned id = inner_->AttributeIDOf(param);
    return id != kNoAttribute || outer_ == nullptr ? id : FromOuter_(outer_->AttributeIDOf(param));
}

unsigned ChainedAttributeDictionary::AttributeIDOf(const std::string& key) const {
    if (key.empty()) {
        return kNoAttribute;
    }
    const unsigned id = inner_->AttributeIDOf(key);
    return id != kNoAttribute || outer_ == nullptr ? id : FromOuter_(outer_->AttributeIDOf(key));
}

Type ChainedAttributeDictionary::TypeByAttributeID(unsigned id) const {
    if (IsOwnName_(id)) {
        return attribute::storage::WString;
    }
    const Place_ place = PlaceOf_(id);
    if (place.dictionary == nullptr) {
        return attribute::storage::None;
    }
    if (id >= inner_->EndAttributeID()) {
        const std::string key = outer_->NameByAttributeID(place.id);
        const DataParamType param = outer_->ParamByAttributeID(place.id);
        if ((!key.empty() && inner_->AttributeIDOf(key) != kNoAttribute) ||
            (param != DataParamType::Null && inner_->AttributeIDOf(param) != kNoAttribute)) {
            return attribute::storage::None;
        }
    }
    return place.dictionary->TypeByAttributeID(place.id);
}

std::string ChainedAttributeDictionary::NameByAttributeID(unsigned id) const {
    const Place_ place = PlaceOf_(id);
    return place.dictionary != nullptr ? place.dictionary->NameByAttributeID(place.id)
                                       : std::string();
}

DataParamType ChainedAttributeDictionary::ParamByAttributeID(unsigned id) const {
    const Place_ place = PlaceOf_(id);
    return place.dictionary != nullptr ? place.dictionary->ParamByAttributeID(place.id)
                                       : DataParamType::Null;
}

bool ChainedAttributeDictionary::IsEditableByAttributeID(unsigned id) const {
    const Place_ place = PlaceOf_(id);
    return !IsOwnName_(id) && place.dictionary != nullptr &&
           place.dictionary->IsEditableByAttributeID(place.id);
}

gtl::status ChainedAttributeDictionary::ValueOf(const FnImpl* function, unsigned id,
                                                void* out) const {
    if (IsOwnName_(id)) {
        *static_cast<std::wstring*>(out) = *name_;
        return {};
    }
    const Place_ place = PlaceOf_(id);
    return place.dictionary != nullptr ? place.dictionary->ValueOf(function, place.id, out)
                                       : error::OperationNotSupported();
}

gtl::status ChainedAttributeDictionary::SetValueOf(FnImpl* function, unsigned id,
                                                   const void* in) const {
    const Place_ place = PlaceOf_(id);
    return !IsOwnName_(id) && place.dictionary != nullptr
               ? place.dictionary->SetValueOf(function, place.id, in)
               : error::OperationNotSupported();
}

gtl::status ChainedAttributeDictionary::PersistedValueOf(const FnImpl* function, unsigned id,
                                                         void* out) const {
    if (IsOwnName_(id)) {
        return ValueOf(function, id, out);
    }
    const Place_ place = PlaceOf_(id);
    return place.dictionary != nullptr ? place.dictionary->PersistedValueOf(function, place.id, out)
                                       : error::OperationNotSupported();
}

gtl::status ChainedAttributeDictionary::SetPersistedValueOf(FnImpl* function, unsigned id,
                                                            const void* in) const {
    const Place_ place = PlaceOf_(id);
    return !IsOwnName_(id) && place.dictionary != nullptr
               ? place.dictionary->SetPersistedValueOf(function, place.id, in)
               : error::OperationNotSupported();
}

}  // namespace lmw::fn
