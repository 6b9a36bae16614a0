#pragma once

// Two dictionaries as one: a function's own laid over that of another function.

#include "common/export.h"
#include "common/fn/attribute_dictionary.h"

#include <optional>
#include <string>

namespace lmw::fn {

/// An inner dictionary with the end E, over an outer one.
///
/// 1. Identifiers below E are the inner ones; c from E on stands for the outer one c - E + 1.
///    By design: outer attribute 0, the other function's name, cannot be reached; the chain's own
///    identity wins. The end is E + outer end - 1.
/// 2. A key or a parameter is looked for in the inner dictionary first.
/// 3. An outer attribute is hidden (type None) when the inner dictionary has its key or its
///    parameter. An empty key and no parameter hide nothing.
/// 4. A name of the chain's own answers attribute 0, which then cannot be changed.
///
/// Value operations hand the caller's function to whichever dictionary answers, so it has to be one
/// that both understand. Neither dictionary is owned. Setters of the chain are for one thread
/// before it is shared.
class LMW_API ChainedAttributeDictionary : public IAttributeDictionary {
 public:
    /// `inner` is not null.
    explicit ChainedAttributeDictionary(const IAttributeDictionary* inner) noexcept
        : inner_(inner) {}
    ChainedAttributeDictionary(const ChainedAttributeDictionary&) = delete;
    ChainedAttributeDictionary& operator=(const ChainedAttributeDictionary&) = delete;
    ~ChainedAttributeDictionary() override;

    /// Null for none.
    void SetOuterAttributeDictionary(const IAttributeDictionary* outer) noexcept { outer_ = outer; }
    void SetName(std::wstring name) { name_ = std::move(name); }

    [[nodiscard]] unsigned EndAttributeID() const override;
    [[nodiscard]] unsigned AttributeIDOf(DataParamType param) const override;
    [[nodiscard]] unsigned AttributeIDOf(const std::string& key) const override;
    [[nodiscard]] attribute::storage::Type TypeByAttributeID(unsigned id) const override;
    [[nodiscard]] std::string NameByAttributeID(unsigned id) const override;
    [[nodiscard]] DataParamType ParamByAttributeID(unsigned id) const override;
    gtl::status ValueOf(const FnImpl* function, unsigned id, void* out) const override;
    gtl::status SetValueOf(FnImpl* function, unsigned id, const void* in) const override;
    gtl::status PersistedValueOf(const FnImpl* function, unsigned id, void* out) const override;
    gtl::status SetPersistedValueOf(FnImpl* function, unsigned id, const void* in) const override;
    [[nodiscard]] bool IsEditableByAttributeID(unsigned id) const override;

 private:
    /// The dictionary that answers an identifier and the identifier in it; none when out of range.
    struct Place_ {
        const IAttributeDictionary* dictionary = nullptr;
        unsigned id = kNoAttribute;
    };
    [[nodiscard]] Place_ PlaceOf_(unsigned id) const;
    [[nodiscard]] unsigned FromOuter_(unsigned outer_id) const;
    [[nodiscard]] bool IsOwnName_(unsigned id) const { return id == 0 && name_.has_value(); }

    const IAttributeDictionary* inner_;
    const IAttributeDictionary* outer_ = nullptr;
    std::optional<std::wstring> name_;
};

}  // namespace lmw::fn
