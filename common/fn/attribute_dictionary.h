#pragma once

// What attributes a kind of function has, of which types, and how they are read and written. One
// dictionary serves all functions of a kind. Callers use attributes.h, which converts between
// types; the dictionaries themselves take values in the types they registered.

#include "common/datatable/data_param_type.h"
#include "common/export.h"
#include "common/fn/attribute_storage.h"
#include "common/fn/fn_attr.h"
#include "common/fn/fn_error.h"
#include "common/fn/fn_impl.h"
#include "common/status.h"

#include <functional>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

namespace lmw::fn {

/// The identifier that stands for no attribute: what look-ups return for what they do not know.
inline constexpr unsigned kNoAttribute = 0xFFFFFFFFU;

/// Identifiers below this are the identity of a function (its name first), not its definition.
inline constexpr unsigned kFirstDefinitionAttribute = 3;

/// The attributes of one kind of function, by identifier.
///
/// 1. Identifiers run from 0 to EndAttributeID() - 1. For all others the type is None, the key
///    empty, the parameter Null, nothing is editable, and the four value operations answer with
///    error::OperationNotSupported().
/// 2. Values are passed as pointers to the type that TypeByAttributeID names. On failure what they
///    point at stays untouched.
///
/// Threads: built once, then read by any number of threads; writing attributes of one function is
/// for one thread at a time.
class LMW_API IAttributeDictionary {
 public:
    virtual ~IAttributeDictionary();

    /// One past the highest identifier.
    [[nodiscard]] virtual unsigned EndAttributeID() const = 0;
    /// The attribute that carries a parameter of the data tables, or that has a key; kNoAttribute
    /// when there is none, and always for the null parameter and the empty key.
    [[nodiscard]] virtual unsigned AttributeIDOf(DataParamType param) const = 0;
    [[nodiscard]] virtual unsigned AttributeIDOf(const std::string& key) const = 0;
    [[nodiscard]] virtual attribute::storage::Type TypeByAttributeID(unsigned id) const = 0;
    [[nodiscard]] virtual std::string NameByAttributeID(unsigned id) const = 0;
    [[nodiscard]] virtual DataParamType ParamByAttributeID(unsigned id) const = 0;
    virtual gtl::status ValueOf(const FnImpl* function, unsigned id, void* out) const = 0;
    virtual gtl::status SetValueOf(FnImpl* function, unsigned id, const void* in) const = 0;
    /// The value as it is stored in projects, of the same type.
    virtual gtl::status PersistedValueOf(const FnImpl* function, unsigned id, void* out) const = 0;
    virtual gtl::status SetPersistedValueOf(FnImpl* function, unsigned id,
                                            const void* in) const = 0;
    [[nodiscard]] virtual bool IsEditableByAttributeID(unsigned id) const = 0;

 protected:
    IAttributeDictionary() = default;
    IAttributeDictionary(const IAttributeDictionary&) = default;
    IAttributeDictionary& operator=(const IAttributeDictionary&) = default;
};

/// The dictionary of a kind: a table of attributes, over the dictionary of the kind it derives from
/// if there is one.
///
/// 1. Identifiers 0, 1 and 2 are always the dictionary's own. From 3 up to the base's end the base
///    answers; own attributes beyond the first three follow there.
/// 2. A key is looked for among the own attributes first, then in the base. Attributes without a
///    key (operations of boundary conditions) are found by identifier only.
/// 3. Setting an attribute from 3 on says FnImpl::DefinitionChanged.
/// 4. The persisted value of an attribute is its value.
///
/// Built by one thread before it is shared, as a rule inside a function-local static.
class LMW_API AttributeDictionary : public IAttributeDictionary {
 public:
    /// Writes the value of an attribute of a function to where the pointer points.
    using Getter = std::function<gtl::status(void*, const FnImpl*)>;
    /// Makes the value that the pointer points at that of a function.
    using Setter = std::function<gtl::status(FnImpl*, const void*)>;

    /// `base` is null for a kind that derives from none; it outlives this dictionary.
    explicit AttributeDictionary(const IAttributeDictionary* base = nullptr);
    AttributeDictionary(const AttributeDictionary&) = delete;
    AttributeDictionary& operator=(const AttributeDictionary&) = delete;
    ~AttributeDictionary() override;

    /// Adds an attribute and returns its identifier. One without a setter cannot be changed and is
    /// not editable; `param` is the parameter of the data tables that the attribute carries.
    /// Registering a key again hides the earlier one from look-up.
    unsigned RegisterAttribute_(const FnAttr& attribute, attribute::storage::Type type,
                                Getter getter, Setter setter,
                                DataParamType param = DataParamType::Null);

    /// Adds an attribute that a pair of member functions of the kind reads and writes:
    ///     dictionary.RegisterMember_(FnAttrTension(), &FnSpline::Tension, &FnSpline::SetTension);
    /// The setter returns void or a gtl::status. A function of another kind gets
    /// error::OperationNotSupported().
    template <class Kind, class Result, class Outcome, class Argument>
    unsigned RegisterMember_(const FnAttr& attribute, Result (Kind::*get)() const,
                             Outcome (Kind::*set)(Argument));

    /// The same without a way to change it.
    template <class Kind, class Result>
    unsigned RegisterReadOnly_(const FnAttr& attribute, Result (Kind::*get)() const);

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
    struct Entry_ {
        FnAttr attribute;
        attribute::storage::Type type = attribute::storage::None;
        DataParamType param = DataParamType::Null;
        bool editable = false;
        Getter getter;
        Setter setter;
    };

    [[nodiscard]] bool IsOfBase_(unsigned id) const;
    [[nodiscard]] const Entry_* Find_(unsigned id) const;

    const IAttributeDictionary* base_;
    std::vector<Entry_> entries_;  // by identifier; those of the base stay blank
    std::map<std::string, unsigned> ids_;
};

// Implementation.

template <class Kind, class Result>
unsigned AttributeDictionary::RegisterReadOnly_(const FnAttr& attribute,
                                                Result (Kind::*get)() const) {
    using Value = std::remove_cvref_t<Result>;
    static_assert(attribute::storage::kTypeOf<Value> != attribute::storage::None);
    return RegisterAttribute_(
        attribute, attribute::storage::kTypeOf<Value>,
        [get](void* out, const FnImpl* function) -> gtl::status {
            const auto* const kind = dynamic_cast<const Kind*>(function);
            if (kind == nullptr) {
                return error::OperationNotSupported();
            }
            *static_cast<Value*>(out) = (kind->*get)();
            return {};
        },
        nullptr);
}

template <class Kind, class Result, class Outcome, class Argument>
unsigned AttributeDictionary::RegisterMember_(const FnAttr& attribute, Result (Kind::*get)() const,
                                              Outcome (Kind::*set)(Argument)) {
    using Value = std::remove_cvref_t<Result>;
    static_assert(std::is_same_v<Value, std::remove_cvref_t<Argument>>);
    const unsigned id = RegisterReadOnly_(attribute, get);
    entries_[id].editable = true;
    entries_[id].setter = [set](FnImpl* function, const void* in) -> gtl::status {
        auto* const kind = dynamic_cast<Kind*>(function);
        if (kind == nullptr) {
            return error::OperationNotSupported();
        }
        if constexpr (std::is_void_v<Outcome>) {
            (kind->*set)(*static_cast<const Value*>(in));
            return {};
        } else {
            return (kind->*set)(*static_cast<const Value*>(in));
        }
    };
    return id;
}

}  // namespace lmw::fn
