#pragma once

// The kinds of function by name: making one, and adding kinds of one's own
// (docs/write-a-function-kind.md).

#include "common/export.h"
#include "common/fn/fn_impl.h"
#include "common/fn/ifn.h"
#include "common/status.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace lmw::fn {

/// Makes a function of one kind, not yet defined.
using KindMaker = std::function<std::unique_ptr<FnImpl>()>;

// The library's kinds are "Const", "FredlundXing", "Linear", "Spline", "Step", "Undefined", one for
// each constant with a unit ("ConstPressure", ...; FnUnitConst) and one for each reference to
// another function ("VolWC", ...; FnReference). All functions here may be called from any thread.

/// Adds a kind for the rest of the process; `make` is not empty. Fails with
/// gtl::Convert_error_status::OutOfRangeStatus when the name is taken, and with
/// error::MalformedFunctionText() when it is empty or has a parenthesis.
LMW_API gtl::status RegisterKind(const std::wstring& name, const KindMaker& make);

/// The names of all kinds, in alphabetical order.
LMW_API std::vector<std::wstring> KindNames();

/// A new function of the kind of that name, null when there is none.
LMW_API std::unique_ptr<FnImpl> MakeFunction(const std::wstring& kind);

/// The function that a definition text describes, ready to be evaluated: the text is taken apart
/// (fn::string::Parse), a function of the named kind made, its attributes set
/// (SetPersistedAttributes), and the function prepared (IFn::UpdateCalculatedValues).
///
/// Returns the first failure. `function` is then the undefined function of the text's name, which
/// keeps the reason and gives it to the error handler of everyone who evaluates it, and keeps the
/// text and gives it back when it is written: a project with one broken function still loads, and
/// saves what it had. An unknown kind fails with meta::ErrConvertOneOf over
/// KindNames().
LMW_API gtl::status Create(const std::wstring& text, IFn& function);

}  // namespace lmw::fn
