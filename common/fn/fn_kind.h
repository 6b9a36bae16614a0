#pragma once

// The base of the library's own kinds of function, and the one to derive from: it keeps what
// identifies a function and which parameters of the data tables it relates.

#include "common/datatable/data_param_type.h"
#include "common/export.h"
#include "common/fn/attribute_dictionary.h"
#include "common/fn/fn_impl.h"

#include <string>

/// A function with a name and a description.
///
/// The first three attributes are its identity: the name (key "Type"; the kind's name while no
/// other is given), the description and the full description. They are not part of the definition:
/// functions that differ in them only are equal.
class LMW_API FnKind : public FnImpl {
 public:
    FnKind& operator=(const FnKind&) = delete;
    ~FnKind() override;

    /// The name given, else that of the kind. Setting the empty text takes the given one away.
    [[nodiscard]] virtual std::wstring Name() const;
    void SetName(const std::wstring& name) { name_ = name; }

    [[nodiscard]] const std::wstring& Description() const { return description_; }
    void SetDescription(const std::wstring& text) { description_ = text; }
    [[nodiscard]] const std::wstring& FullDescription() const { return full_description_; }
    void SetFullDescription(const std::wstring& text) { full_description_ = text; }

    /// The parameters that the function takes and gives, Null when it is not tied to any.
    [[nodiscard]] DataParamType InputParam() const { return input_param_; }
    void SetInputParam(DataParamType param);
    [[nodiscard]] DataParamType OutputParam() const { return output_param_; }
    void SetOutputParam(DataParamType param);

    /// Registers the three identity attributes; comes first in the dictionary of every kind.
    static void RegisterIdentity_(lmw::fn::AttributeDictionary& dictionary);
    /// Registers InputParam and OutputParam.
    static void RegisterParams_(lmw::fn::AttributeDictionary& dictionary);

 protected:
    using FnImpl::FnImpl;
    FnKind(const FnKind&) = default;

    [[nodiscard]] const std::wstring& GivenName_() const { return name_; }

    /// The failure of an evaluation of this function: its name, and its description if it has one.
    [[nodiscard]] gtl::status UnableToComputeValue_() const;

 private:
    std::wstring name_;
    std::wstring description_;
    std::wstring full_description_;
    DataParamType input_param_ = DataParamType::Null;
    DataParamType output_param_ = DataParamType::Null;
};
