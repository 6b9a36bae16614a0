// The smallest program that needs the headers, the library and its exported classes.

#include <common/common.h>

int main() {
    AnalysisKind kind = AnalysisKind::None;
    if (str::from_wstring(str::as_wstring(AnalysisKind::Flow), kind).Failed() ||
        kind != AnalysisKind::Flow) {
        return 1;
    }
    try {
        throw gtl::status_exception(LmwError::File::file_not_found(L"project.lwz"));
    } catch (const gtl::status_exception& error) {
        return error.Status().MessageId() == 20524 ? 0 : 2;
    }
}
