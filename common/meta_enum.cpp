#include "common/meta_enum.h"

#include "common/convert_error.h"
#include "common/message_text.h"

#include <algorithm>

namespace meta {

namespace {

std::wstring KeyOf(const MetaEnumCommon::XRef& row) {
    const std::string_view key = row.key;
    return {key.begin(), key.end()};
}

std::wstring TextOf(const MetaEnumCommon::XRef& row, MetaFormatType format) {
    if (format == MetaFormatType::kKey) {
        return KeyOf(row);
    }
    const bool second_first = format == MetaFormatType::kSecondDisplay;
    const std::uint32_t wanted = second_first ? row.text2 : row.text1;
    const std::uint32_t instead = second_first ? row.text1 : row.text2;
    const std::uint32_t message_id = wanted != 0 ? wanted : instead;
    return message_id != 0 ? lmw::MessageText(message_id) : KeyOf(row);
}

}  // namespace

gtl::status ErrConvertOneOf(const std::wstring& text, std::span<const std::wstring> allowed) {
    std::wstring list;
    for (const std::wstring& one : allowed) {
        list += (list.empty() ? L"" : L", ") + one;
    }
    return gtl::Convert_error_status::OutOfRangeStatus(text, list);
}

const MetaEnumCommon::XRef* MetaEnumCommon::Table::Find(std::int64_t value) const {
    std::call_once(index_built_, [this] {
        index_.reserve(rows_.size());
        for (const XRef& row : rows_) {
            index_.emplace_back(row.value, static_cast<std::uint32_t>(index_.size()));
        }
        std::sort(index_.begin(), index_.end());
    });
    const auto found = std::lower_bound(
        index_.begin(), index_.end(), value,
        [](const auto& entry, std::int64_t sought) { return entry.first < sought; });
    return found != index_.end() && found->first == value ? &rows_[found->second] : nullptr;
}

const MetaEnumCommon::XRef* MetaEnumCommon::FindEntry(const Table& table,
                                                      const std::int32_t* value) {
    const XRef* row = value != nullptr ? table.Find(*value) : nullptr;
    return row != nullptr ? row : &table.DefaultRow();
}

gtl::status MetaEnumCommon::ConvertTo(std::wstring& text, const Table& table, MetaFormatType format,
                                      std::int32_t value, int /*context*/) {
    text = TextOf(*FindEntry(table, &value), format);
    return {};
}

gtl::status MetaEnumCommon::ConvertTo(std::int64_t& number, const Table& table, std::int32_t value,
                                      int /*context*/) {
    number = FindEntry(table, &value)->value;
    return {};
}

gtl::status MetaEnumCommon::ConvertFrom(std::int32_t& value, const Table& table,
                                        MetaFormatType format, const std::wstring& text,
                                        int /*context*/) {
    for (const XRef& row : table.Rows()) {
        if (TextOf(row, format) == text) {
            value = row.value;
            return {};
        }
    }
    return error_invalid_value(table, text, format);
}

gtl::status MetaEnumCommon::ConvertFrom(std::int32_t& value, const Table& table,
                                        std::int64_t number, int /*context*/) {
    const XRef* row = table.Find(number);
    if (row == nullptr) {
        return error_invalid_value(table, std::to_wstring(number));
    }
    value = row->value;
    return {};
}

gtl::status MetaEnumCommon::error_invalid_value(const Table& table, const std::wstring& text,
                                                MetaFormatType format) {
    std::vector<std::wstring> allowed;
    for (const XRef& row : table.Rows()) {
        allowed.push_back(TextOf(row, format));
    }
    return ErrConvertOneOf(text, allowed);
}

}  // namespace meta
