#include "common/fn/fn_string.h"

#include "common/fn/fn_attr.h"
#include "common/fn/fn_error.h"

#include <algorithm>
#include <string_view>

namespace fn::string {

namespace {

constexpr std::size_t kNone = std::wstring_view::npos;

/// The balanced groups of a text: for each "(" that opens one, where its ")" is. Read from the
/// right, so that texts with many parentheses that are never closed take linear time as well.
class Groups {
 public:
    explicit Groups(std::wstring_view text) {
        if (text.find(L'(') == kNone) {
            return;
        }
        // close_[k]: the ")" that ends a group of which the text from k on is the rest.
        close_.assign(text.size() + 2, kNone);
        for (std::size_t k = text.size(); k-- > 0;) {
            std::size_t next = k + 1;
            if (text[k] == L')') {
                close_[k] = k;
                continue;
            }
            if (text[k] == L'\\') {
                next = k + 2;
            } else if (text[k] == L'(') {
                next = close_[k + 1] != kNone ? close_[k + 1] + 1 : text.size();
            }
            close_[k] = close_[next];
        }
    }

    /// Where the group opened by the "(" at `k` ends, kNone when it is not balanced.
    [[nodiscard]] std::size_t EndOf(std::size_t k) const { return close_[k + 1]; }

 private:
    std::vector<std::size_t> close_;
};

std::pair<std::wstring, std::wstring> PairOf(std::wstring item) {
    const std::size_t equals = item.find(L'=');
    if (equals == kNone) {
        const std::string key = FnAttrValue().key;
        return {std::wstring(key.begin(), key.end()), std::move(item)};
    }
    return {item.substr(0, equals), item.substr(equals + 1)};
}

AttributePairs PairsOf(std::wstring_view items) {
    AttributePairs pairs;
    if (items.empty()) {
        return pairs;
    }
    const Groups groups(items);
    std::wstring item;
    for (std::size_t k = 0; k < items.size(); ++k) {
        const wchar_t character = items[k];
        if (character == L'\\' && k + 1 < items.size()) {
            item += items[++k];
        } else if (character == L'(' && groups.EndOf(k) != kNone) {
            const std::size_t end = groups.EndOf(k);
            item += items.substr(k, end - k + 1);
            k = end;
        } else if (character == L',') {
            pairs.push_back(PairOf(std::move(item)));
            item.clear();
        } else {
            item += character;
        }
    }
    pairs.push_back(PairOf(std::move(item)));
    return pairs;
}

void AppendEscaped(std::wstring& out, std::wstring_view text) {
    const Groups groups(text);
    for (std::size_t k = 0; k < text.size(); ++k) {
        const wchar_t character = text[k];
        if (character == L'(' && groups.EndOf(k) != kNone) {
            const std::size_t end = groups.EndOf(k);
            out += text.substr(k, end - k + 1);
            k = end;
            continue;
        }
        if (character == L'\\' || character == L',' || character == L'(' || character == L')') {
            out += L'\\';
        }
        out += character;
    }
}

auto FindKey(const AttributePairs& attributes, const std::wstring& key) {
    return std::find_if(attributes.begin(), attributes.end(),
                        [&key](const auto& pair) { return pair.first == key; });
}

}  // namespace

gtl::status Parse(const std::wstring& text, std::wstring& name, AttributePairs& attributes) {
    const std::size_t open = text.find(L'(');
    const std::size_t close = text.rfind(L')');
    if (open == kNone || close == kNone || open > close) {
        attributes.clear();
        return lmw::fn::error::MalformedFunctionText();
    }
    // `text` may be the name or a value of the attributes that are replaced.
    AttributePairs pairs = PairsOf(std::wstring_view(text).substr(open + 1, close - open - 1));
    std::wstring text_name = text.substr(0, open);
    attributes = std::move(pairs);
    name = std::move(text_name);
    return {};
}

std::wstring Serialize(const std::wstring& name, const AttributePairs& attributes) {
    std::wstring text = name + L"(";
    for (std::size_t k = 0; k < attributes.size(); ++k) {
        if (k > 0) {
            text += L',';
        }
        AppendEscaped(text, attributes[k].first);
        text += L'=';
        AppendEscaped(text, attributes[k].second);
    }
    return text + L")";
}

gtl::status Verify(const std::wstring& text) {
    std::wstring name;
    AttributePairs attributes;
    return Parse(text, name, attributes);
}

std::wstring GetAttributeFromParsedVec(const AttributePairs& attributes, const std::wstring& key) {
    const auto found = FindKey(attributes, key);
    return found != attributes.end() ? found->second : std::wstring();
}

std::wstring GetFunctionAttributeValue(const std::wstring& text, const std::wstring& key) {
    std::wstring name;
    AttributePairs attributes;
    Parse(text, name, attributes).Ignore();  // without attributes there is no value
    return GetAttributeFromParsedVec(attributes, key);
}

std::wstring RemoveFunctionAttribute(const std::wstring& text, const std::wstring& key) {
    std::wstring name;
    AttributePairs attributes;
    if (Parse(text, name, attributes).Failed()) {
        return text;
    }
    std::erase_if(attributes, [&key](const auto& pair) { return pair.first == key; });
    return Serialize(name, attributes);
}

std::wstring InsertFunctionAttributeBefore(const std::wstring& text, const std::wstring& before,
                                           const std::wstring& key, const std::wstring& value) {
    std::wstring name;
    AttributePairs attributes;
    if (Parse(text, name, attributes).Failed()) {
        return text;
    }
    attributes.emplace(FindKey(attributes, before), key, value);
    return Serialize(name, attributes);
}

}  // namespace fn::string
