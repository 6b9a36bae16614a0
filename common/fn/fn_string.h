#pragma once

// The text of a function's definition: a name and its attributes as key=value pairs in parentheses,
// such as "Fn(a=1,b=g(c=2,d=3))". This header only takes such texts apart and puts them together;
// making a function of one is the business of the function objects. Surprising: nothing is trimmed,
// blanks belong to the name, key or value they stand in.

#include "common/export.h"
#include "common/status.h"

#include <string>
#include <utility>
#include <vector>

namespace fn::string {

/// Keys and values in their order; a key may stand more than once.
using AttributePairs = std::vector<std::pair<std::wstring, std::wstring>>;

/// Takes `text` apart.
///
/// 1. The name is what stands before the first "("; the items stand between it and the last ")",
///    and what follows that is ignored. Without both in this order the status is message 20547,
///    `attributes` are empty and `name` stays as it was.
/// 2. A "," between items splits, one within a balanced group "(...)" does not. A group is kept as
///    it stands, so that a value may be the text of a function; a parenthesis that is not balanced
///    is a character like any other.
/// 3. A "\" makes the next character a plain one, and is dropped outside groups only: within one it
///    is left to whoever takes the value apart. At the very end of the items it stands for itself.
/// 4. An item is cut at its first "=".
///    By design: also where that "=" lies within a group, so "g(c=2)" as an item is the key "g(c"
///    with the value "2)"; a cut by depth would read stored texts differently. An item without "="
///    is the value of the attribute "Value".
/// 5. "Fn()" has no attributes. "Fn(,)" has two items, both empty.
///
/// Linear in the length; no recursion.
LMW_API gtl::status Parse(const std::wstring& text, std::wstring& name, AttributePairs& attributes);

/// Puts a text together: the inverse of Parse for every name without "(" and all keys without "=",
/// which the text form cannot express. Keys and values escape "\", "," and parentheses that are not
/// balanced; balanced groups are written as they stand.
LMW_API std::wstring Serialize(const std::wstring& name, const AttributePairs& attributes);

/// The status of parsing `text`.
LMW_API gtl::status Verify(const std::wstring& text);

/// The value of the first pair with `key`, empty when there is none.
LMW_API std::wstring GetAttributeFromParsedVec(const AttributePairs& attributes,
                                               const std::wstring& key);

/// The same from a text, empty also when it cannot be parsed.
LMW_API std::wstring GetFunctionAttributeValue(const std::wstring& text, const std::wstring& key);

/// `text` without all its pairs with `key`. A text that cannot be parsed comes back unchanged; from
/// another, what followed its last ")" is gone.
LMW_API std::wstring RemoveFunctionAttribute(const std::wstring& text, const std::wstring& key);

/// `text` with a pair inserted before the first one with `before`, at the end when there is none;
/// else as RemoveFunctionAttribute.
LMW_API std::wstring InsertFunctionAttributeBefore(const std::wstring& text,
                                                   const std::wstring& before,
                                                   const std::wstring& key,
                                                   const std::wstring& value);

}  // namespace fn::string
