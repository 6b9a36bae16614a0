#pragma once

// Kinds of function and a handler for the tests of what all kinds share.

#include "common/fn/capabilities.h"
#include "common/fn/evaluate.h"
#include "common/fn/fn_kind.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace lmw::test {

/// A kind with one attribute "Value" and whatever calculation a test gives it. It offers nothing
/// more, unless a test derives from it.
class PlainKind : public FnKind {
 public:
    using Calculation = std::function<double(const double*, const double*)>;

    explicit PlainKind(Calculation calculation = {})
        : FnKind(Dictionary()), calculation_(std::move(calculation)) {}
    PlainKind(const PlainKind&) = default;

    [[nodiscard]] double Value() const { return value_; }
    void SetValue(double value) { value_ = value; }

    [[nodiscard]] double Calculate(const double* x, const double* y) const override {
        return calculation_ ? calculation_(x, y) : value_;
    }
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override {
        return std::make_unique<PlainKind>(*this);
    }
    [[nodiscard]] std::wstring KindName() const override { return L"Plain"; }

    static const fn::AttributeDictionary& Dictionary() {
        struct Built : fn::AttributeDictionary {
            Built() {
                RegisterIdentity_(*this);
                RegisterMember_(FnAttrValue(), &PlainKind::Value, &PlainKind::SetValue);
            }
        };
        static const Built dictionary;
        return dictionary;
    }

 private:
    Calculation calculation_;
    double value_ = 0.0;
};

/// Keeps what it is told.
class RecordingHandler : public fn::IErrorHandler {
 public:
    struct Failure {
        const FnImpl* function;
        const double* x;
        const double* y;
        std::uint32_t message_id;  ///< 0 for success
    };

    void CalculationFailed(const FnImpl& function, const double* x, const double* y,
                           const gtl::status& why) noexcept override {
        failures_.push_back({&function, x, y, why.MessageId()});
    }

    /// The failures since the last call.
    [[nodiscard]] std::vector<Failure> Take() { return std::exchange(failures_, {}); }

 private:
    std::vector<Failure> failures_;
};

}  // namespace lmw::test
