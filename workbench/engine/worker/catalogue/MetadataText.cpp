#include "workbench/engine/worker/catalogue/MetadataText.h"

#include "oribund/host/base/Numeric.h"
#include "workbench/model/projection/ServiceText.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace workbench
{

namespace
{

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}

bool isLower(char c)
{
    return c >= 'a' && c <= 'z';
}

char lower(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool isWord(std::string_view text)
{
    return !text.empty() && text.size() <= 24 && std::none_of(text.begin(), text.end(), isBlank);
}

std::vector<std::string> splitWords(std::string_view text)
{
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        std::string_view word = trimmed(text.substr(0, comma));
        for (const std::string_view lead : {"or ", "and "})
            if (word.starts_with(lead))
                word = trimmed(word.substr(lead.size()));
        if (!isWord(word))
            return {};
        words.emplace_back(word);
        text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
    }
    return words;
}

std::vector<std::string> quotedWords(std::string_view text)
{
    std::vector<std::string> words;
    for (std::size_t open = text.find('\''); open != std::string_view::npos; open = text.find('\'', open)) {
        const std::size_t close = text.find('\'', open + 1);
        if (close == std::string_view::npos)
            break;
        const std::string_view word = text.substr(open + 1, close - open - 1);
        if (isWord(word))
            words.emplace_back(word);
        open = close + 1;
    }
    return words;
}

} // namespace

std::string lowerCase(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

std::string unquoted(std::string_view text)
{
    text = trimmed(text);
    for (const char quote : {'\'', '"'})
        if (text.size() >= 2 && text.front() == quote && text.back() == quote)
            text = trimmed(text.substr(1, text.size() - 2));
    return std::string(text);
}

std::string readableName(std::string_view identifier)
{
    identifier = trimmed(identifier);
    if (identifier.starts_with("av."))
        identifier.remove_prefix(3);
    std::string name;
    for (std::size_t i = 0; i < identifier.size(); ++i) {
        // Not within "dB" and "kHz".
        const bool begins = i > 1 && isLower(identifier[i - 2]) && isLower(identifier[i - 1]) && isUpper(identifier[i]);
        const bool isAlone = i + 1 == identifier.size() || isUpper(identifier[i + 1]);
        if (begins)
            name += ' ';
        name += identifier[i] == '_' ? ' ' : begins && !isAlone ? lower(identifier[i]) : identifier[i];
    }
    if (!name.empty())
        name.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(name.front())));
    return name;
}

std::string labelFromSentence(std::string_view sentence)
{
    constexpr std::size_t kLongest = 40;
    sentence = trimmed(sentence.substr(0, sentence.find_first_of(",;.([:\n")));
    static constexpr std::array<std::string_view, 9> leads = {"set ",   "specify ", "select ", "choose ", "enable ",
                                                              "allow ", "apply ",   "the ",    "a "};
    const auto strip = [&] {
        const auto* const lead = std::find_if(leads.begin(), leads.end(), [&](std::string_view word) {
            return lowerCase(sentence.substr(0, word.size())) == word;
        });
        if (lead == leads.end())
            return false;
        sentence = trimmed(sentence.substr(lead->size()));
        return true;
    };
    while (strip()) {
    }
    return sentence.size() > kLongest ? std::string() : readableName(sentence);
}

std::optional<std::array<double, 4>> parseColour(std::string_view text)
{
    static constexpr std::array<std::pair<std::string_view, const char*>, 10> names = {{{"black", "#000000"},
                                                                                        {"white", "#ffffff"},
                                                                                        {"red", "#ff0000"},
                                                                                        {"green", "#008000"},
                                                                                        {"blue", "#0000ff"},
                                                                                        {"yellow", "#ffff00"},
                                                                                        {"cyan", "#00ffff"},
                                                                                        {"magenta", "#ff00ff"},
                                                                                        {"gray", "#808080"},
                                                                                        {"grey", "#808080"}}};
    const std::string bare = lowerCase(trimmed(text));
    for (const auto& [name, colour] : names)
        if (name == bare)
            return parseServiceColour(colour);
    return parseServiceColour(bare);
}

std::optional<double> parseNumber(std::string_view text)
{
    return oribund::parseDouble(unquoted(text));
}

std::vector<std::string> choicesInProse(std::string_view description)
{
    const std::size_t open = description.find('[');
    const std::size_t close = description.find(']', open == std::string_view::npos ? 0 : open);
    if (open != std::string_view::npos && close != std::string_view::npos)
        if (std::vector<std::string> words = splitWords(description.substr(open + 1, close - open - 1));
            words.size() > 1)
            return words;
    if (std::vector<std::string> words = quotedWords(description); words.size() > 1)
        return words;
    const std::size_t colon = description.rfind(':');
    if (colon == std::string_view::npos)
        return {};
    std::string_view list = trimmed(description.substr(colon + 1));
    if (list.ends_with('.'))
        list.remove_suffix(1);
    std::vector<std::string> words = splitWords(list);
    return words.size() > 1 ? words : std::vector<std::string>();
}

} // namespace workbench
