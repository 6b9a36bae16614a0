#pragma once

// Options that take numbers, read the same way as the numbers of files: independent of the locale,
// the whole text or nothing, finite.

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lmw::tool {

/// Adds an option that takes one finite number. `value` stays empty when the option is not given.
CLI::Option* AddNumber(CLI::App& command, const std::string& names, std::optional<double>& value,
                       const std::string& description);

/// Adds an option that takes one or more finite numbers, separated by commas.
CLI::Option* AddNumberList(CLI::App& command, const std::string& names, std::vector<double>& values,
                           const std::string& description);

/// Adds an option that takes a whole number from `least` to `most`. `value` keeps what it held when
/// the option is not given.
CLI::Option* AddCount(CLI::App& command, const std::string& names, unsigned& value, unsigned least,
                      unsigned most, const std::string& description);

/// A word of the command line and what it stands for.
template <class Meaning>
struct Word {
    std::string text;
    Meaning meaning;
};

/// Adds an option that takes one of a few words, spelled exactly so.
template <class Meaning>
CLI::Option* AddWord(CLI::App& command, const std::string& names, Meaning& value,
                     std::vector<Word<Meaning>> words, const std::string& description);

}  // namespace lmw::tool

// Implementation.

namespace lmw::tool {

/// The complaint about a word that is none of `allowed`.
[[noreturn]] void ThrowUnknownWord(const std::string& names, const std::string& text,
                                   const std::vector<std::string>& allowed);

template <class Meaning>
CLI::Option* AddWord(CLI::App& command, const std::string& names, Meaning& value,
                     std::vector<Word<Meaning>> words, const std::string& description) {
    const auto read = [&value, names, words = std::move(words)](const std::string& text) {
        std::vector<std::string> allowed;
        for (const Word<Meaning>& word : words) {
            if (word.text == text) {
                value = word.meaning;
                return;
            }
            allowed.push_back(word.text);
        }
        ThrowUnknownWord(names, text, allowed);
    };
    return command.add_option_function<std::string>(names, read, description)->type_name("WORD");
}

}  // namespace lmw::tool
