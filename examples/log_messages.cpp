// How do I log messages, choose which ones appear, and send them where I want them?

#include <common/catch_error_sink.h>
#include <common/event_sink.h>
#include <common/log.h>
#include <common/log_category.h>
#include <common/log_filter.h>
#include <common/log_level.h>
#include <common/sys/text_encoding.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

//! [sink]
// A sink writes messages wherever the program shows them. Any thread may call it.
class Output final : public lmw::diag::IEventSink {
 public:
    void Log(int level, int category, const std::wstring& message, const char* /*file*/,
             int /*line*/, const char* /*function*/) override {
        std::printf("  %s [%s] %s\n", sys::Narrow(lmw::diag::LevelText(level)).c_str(),
                    lmw::diag::CategoryNames(category).c_str(), sys::Narrow(message).c_str());
    }
};
//! [sink]

//! [log]
const lmw::diag::DeclareCategoryMask kMesh("mesh");
const lmw::diag::DeclareCategoryMask kSolver("solver");

void Work() {
    LMW_LOG(lmw::diag::kInformation, kMesh.Mask(), L"%d elements", 1200);
    LMW_LOG(lmw::diag::kWarning, kMesh.Mask(), L"%d elements of %s are flat", 3, L"the core");
    LMW_LOG(lmw::diag::kError, kSolver.Mask(), L"step %d: residual %.2e", 7, 0.0125);
    LMW_LOG(lmw::diag::kInformation, lmw::diag::kDefaultCategories, L"done");
}
//! [log]

void Run(const char* title) {
    std::printf("%s\n", title);
    Work();
}

}  // namespace

int main() {
    lmw::diag::CatchErrorEventSink& errors = lmw::diag::CatchErrorEventSink::Instance();

    //! [filter]
    lmw::diag::EventSinks::Remove(*lmw::diag::EventSinks::Default());  // not to standard error
    lmw::diag::EventSinks::Add(std::make_shared<Output>());

    Run("as it starts: information and above, of no named category");
    lmw::diag::LogFilter::Set(L"warning", L"mesh;solver");
    Run("warnings and above of mesh and solver");
    lmw::diag::LogFilter::Set(lmw::diag::kVerbose, lmw::diag::kAllCategories);
    Run("everything");
    //! [filter]
    std::printf("errors that were logged: %d\n", static_cast<int>(errors.Count()));
    return 0;
}
