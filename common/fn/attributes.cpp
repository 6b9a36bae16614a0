#include "common/fn/attributes.h"

#include "common/fn/attribute_dictionary.h"
#include "common/fn/detail/attribute_value.h"
#include "common/fn/fn_error.h"
#include "common/sys/text_encoding.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace lmw::fn {

using attribute::storage::Type;
using attribute::storage::WString;
using detail::AttributeValue;
using detail::ConvertValue;

namespace {

// How a dictionary reads and writes one attribute: as it is, or as it is stored.
using Reader = gtl::status (IAttributeDictionary::*)(const FnImpl*, unsigned, void*) const;
using Writer = gtl::status (IAttributeDictionary::*)(FnImpl*, unsigned, const void*) const;

gtl::status Read(Reader read, const FnImpl& function, unsigned id, Type type, void* out) {
    const IAttributeDictionary& dictionary = function.Attributes();
    const Type registered = dictionary.TypeByAttributeID(id);
    if (registered == attribute::storage::None) {
        return error::OperationNotSupported();
    }
    if (registered == type) {
        return (dictionary.*read)(&function, id, out);
    }
    AttributeValue value(registered);
    gtl::status result = (dictionary.*read)(&function, id, value.Data());
    return result.Succeeded() ? ConvertValue(registered, value.Data(), type, out) : result;
}

gtl::status Write(Writer write, FnImpl& function, unsigned id, Type type, const void* in) {
    const IAttributeDictionary& dictionary = function.Attributes();
    const Type registered = dictionary.TypeByAttributeID(id);
    if (registered == attribute::storage::None) {
        return error::OperationNotSupported();
    }
    if (registered == type) {
        return (dictionary.*write)(&function, id, in);
    }
    AttributeValue value(registered);
    gtl::status result = ConvertValue(type, in, registered, value.Data());
    return result.Succeeded() ? (dictionary.*write)(&function, id, value.Data()) : result;
}

// Keeps the first failure of several.
void KeepFirst(gtl::status& first, gtl::status next) {
    if (first.Succeeded()) {
        first = std::move(next);
    }
}

// Whether an identity attribute says nothing: no description, or a name that is the kind's.
bool SaysNothing(const FnImpl& function, unsigned id, const std::wstring& text) {
    return id < kFirstDefinitionAttribute &&
           (text.empty() || (id == 0 && text == function.KindName()));
}

}  // namespace

namespace attributes {

gtl::status ValueOf(const FnImpl* function, unsigned id, Type type, void* out) {
    return Read(&IAttributeDictionary::ValueOf, *function, id, type, out);
}

gtl::status SetValueOf(FnImpl* function, unsigned id, Type type, const void* in) {
    return Write(&IAttributeDictionary::SetValueOf, *function, id, type, in);
}

gtl::status PersistedValueOf(const FnImpl* function, unsigned id, std::wstring& out) {
    return Read(&IAttributeDictionary::PersistedValueOf, *function, id, WString, &out);
}

gtl::status SetPersistedValueOf(FnImpl* function, unsigned id, Type type, const void* in) {
    return Write(&IAttributeDictionary::SetPersistedValueOf, *function, id, type, in);
}

math::Quantity QuantityOf(const std::string& key) {
    using math::Quantity;
    struct Row {
        std::string_view key;
        Quantity quantity;
    };
    static constexpr auto kRows = std::to_array<Row>({
        {"ConstAbsolutePressure", Quantity::kPressure},
        {"ConstAirFlux", Quantity::kUnitFlux},
        {"ConstConcentration", Quantity::kConcentration},
        {"ConstDistance", Quantity::kLength},
        {"ConstEnergyRate", Quantity::kEnergyRate},
        {"ConstEnergyUnitFlux", Quantity::kEnergyUnitFlux},
        {"ConstForce", Quantity::kForce},
        {"ConstMassFlux", Quantity::kMassUnitFlux},
        {"ConstMassRate", Quantity::kMassRate},
        {"ConstPressure", Quantity::kPressure},
        {"ConstSpring", Quantity::kSpring},
        {"ConstTemperature", Quantity::kTemperature},
        {"ConstUnitWeight", Quantity::kUnitWeight},
        {"ConstVolumetricFlowRate", Quantity::kVolumetricFlowRate},
        {"ConstWaterFlux", Quantity::kUnitFlux},
    });
    const auto* const found =
        std::find_if(kRows.begin(), kRows.end(), [&](const Row& row) { return row.key == key; });
    return found != kRows.end() ? found->quantity : Quantity::kNone;
}

gtl::status ConvertUnits(FnImpl& function, const math::UnitSet& from, const math::UnitSet& to) {
    gtl::status first;
    const IAttributeDictionary& dictionary = function.Attributes();
    for (unsigned id = 0; id < dictionary.EndAttributeID(); ++id) {
        const math::Quantity quantity = QuantityOf(dictionary.NameByAttributeID(id));
        if (quantity == math::Quantity::kNone ||
            dictionary.TypeByAttributeID(id) != attribute::storage::Double) {
            continue;
        }
        double value = 0.0;
        gtl::status result = dictionary.ValueOf(&function, id, &value);
        if (result.Succeeded()) {
            value = to.FromSi(quantity, from.ToSi(quantity, value));
            result = dictionary.SetValueOf(&function, id, &value);
        }
        KeepFirst(first, std::move(result));
    }
    return first;
}

}  // namespace attributes

gtl::status AssignAttributes(FnImpl& to, const FnImpl& from) {
    gtl::status first;
    if (&to == &from) {
        return first;
    }
    const IAttributeDictionary& source = from.Attributes();
    const IAttributeDictionary& target = to.Attributes();
    for (unsigned id = 0; id < source.EndAttributeID(); ++id) {
        const Type type = source.TypeByAttributeID(id);
        const unsigned target_id = target.AttributeIDOf(source.NameByAttributeID(id));
        if (type == attribute::storage::None || !target.IsEditableByAttributeID(target_id)) {
            continue;
        }
        AttributeValue value(type);
        gtl::status result = source.ValueOf(&from, id, value.Data());
        if (result.Succeeded()) {
            result = attributes::SetValueOf(&to, target_id, type, value.Data());
        }
        KeepFirst(first, std::move(result));
    }
    return first;
}

gtl::status SetPersistedAttributes(
    IFn& function, const std::vector<std::pair<std::wstring, std::wstring>>& pairs) {
    gtl::status first;
    if (pairs.empty()) {
        return first;
    }
    FnImpl& changed = function.pImpl_mutable();
    for (const auto& [key, text] : pairs) {
        // Keys are ASCII; what another text becomes is the key of nothing.
        const unsigned id = changed.Attributes().AttributeIDOf(sys::Narrow(key));
        KeepFirst(first, attributes::SetPersistedValueOf(&changed, id, WString, &text));
    }
    return first;
}

std::vector<std::pair<std::wstring, std::wstring>> PersistedAttributes(const FnImpl& function) {
    std::vector<std::pair<std::wstring, std::wstring>> pairs;
    const IAttributeDictionary& dictionary = function.Attributes();
    for (unsigned id = 0; id < dictionary.EndAttributeID(); ++id) {
        const std::string key = dictionary.NameByAttributeID(id);
        if (key.empty() || !dictionary.IsEditableByAttributeID(id) || !function.HasAttribute(id)) {
            continue;
        }
        std::wstring text;
        if (attributes::PersistedValueOf(&function, id, text).Succeeded() &&
            !SaysNothing(function, id, text)) {
            pairs.emplace_back(sys::Widen(key), std::move(text));
        }
    }
    return pairs;
}

}  // namespace lmw::fn
