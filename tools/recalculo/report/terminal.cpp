// The conventions are those of other programs of the terminal: NO_COLOR (https://no-color.org), TERM=dumb,
// COLUMNS, and the locale for the character set.

#include "report/terminal.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <langinfo.h>
#include <locale.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/utf8.h"

namespace zarven::tool {

namespace {

constexpr int usual_columns = 80;
/// Columns that a paragraph needs beyond what it is set back.
constexpr int least_paragraph = 20;

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// The locale of the environment, of which the process itself is not put under.
bool locale_is_utf8() {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr)
        return false;
    const bool is_utf8 = std::strcmp(nl_langinfo_l(CODESET, locale), "UTF-8") == 0;
    freelocale(locale);
    return is_utf8;
}

/// A positive number, else 0.
int positive(const std::string& text) {
    int number = 0;
    return is_whole_number(text, number) && number > 0 ? number : 0;
}

int width_of(const Surroundings& surroundings) {
    if (!surroundings.is_terminal)
        return 0;
    if (surroundings.columns > 0)
        return surroundings.columns;
    const int columns = positive(surroundings.columns_variable);
    return columns > 0 ? columns : usual_columns;
}

} // namespace

const std::vector<std::string>& colour_choices() {
    static const std::vector<std::string> words = {"auto", "always", "never"};
    return words;
}

ColourChoice colour_choice(std::string_view word) {
    return word == "always"  ? ColourChoice::always
           : word == "never" ? ColourChoice::never
                             : ColourChoice::automatic;
}

Surroundings surroundings_of(int descriptor) {
    Surroundings surroundings;
    surroundings.is_terminal = isatty(descriptor) == 1;
    winsize size{};
    if (surroundings.is_terminal && ioctl(descriptor, TIOCGWINSZ, &size) == 0)
        surroundings.columns = size.ws_col;
    surroundings.columns_variable = variable("COLUMNS");
    surroundings.term = variable("TERM");
    surroundings.no_color = variable("NO_COLOR");
    surroundings.is_utf8_locale = locale_is_utf8();
    return surroundings;
}

TextStyle style_for(const Surroundings& surroundings, ColourChoice choice) {
    TextStyle style;
    const bool is_wanted =
        choice == ColourChoice::always || (choice == ColourChoice::automatic && can_redraw(surroundings));
    style.colour = is_wanted && surroundings.no_color.empty();
    style.utf8 = surroundings.is_utf8_locale;
    style.width = width_of(surroundings);
    return style;
}

bool can_redraw(const Surroundings& surroundings) {
    return surroundings.is_terminal && surroundings.term != "dumb";
}

const Symbols& symbols_of(const TextStyle& style) {
    static constexpr Symbols utf8{"…", "→", "·", "–", "●", "█", "░"};
    static constexpr Symbols ascii{"...", "->", "-", "-", "*", "#", "."};
    return style.utf8 ? utf8 : ascii;
}

std::string shown(std::string_view text, const TextStyle& style) {
    return style.utf8 ? printable(text) : ascii(printable(text));
}

std::string shown_as_message(std::string_view text) {
    return shown(text, style_for(surroundings_of(STDERR_FILENO), ColourChoice::never));
}

void write_message(std::string_view text) {
    const std::string line = shown_as_message(text) + "\n";
    // There is nowhere to tell that it failed.
    [[maybe_unused]] const std::size_t written = std::fwrite(line.data(), 1, line.size(), stderr);
}

std::string painted(std::string_view text, Paint paint, const TextStyle& style) {
    if (!style.colour || paint == Paint::none || text.empty())
        return std::string(text);
    const char* colour = paint == Paint::bold ? "\x1B[1m" : paint == Paint::red ? "\x1B[31m" : "\x1B[33m";
    return colour + std::string(text) + "\x1B[0m";
}

std::string paragraph_text(const std::string& text, int indent, Paint paint, const TextStyle& style) {
    const int set_back = 2;
    const bool is_narrow = style.width != 0 && style.width < indent + least_paragraph;
    const int first = is_narrow ? 0 : indent;
    std::vector<std::string> lines = wrapped(text, style.width == 0 ? 0 : style.width - first);
    int margin = first;
    if (lines.size() > 1 && !is_narrow) {
        margin = first + set_back;
        lines = wrapped(text, style.width - margin);
    }
    std::string broken;
    for (const std::string& line : lines) {
        const int blanks = broken.empty() ? first : margin;
        broken.append(static_cast<std::size_t>(blanks), ' ').append(painted(line, paint, style)) += '\n';
    }
    return broken;
}

std::string joined(const std::vector<std::string>& parts, const TextStyle& style) {
    return fmt::format("{}", fmt::join(parts, fmt::format(" {} ", symbols_of(style).dot)));
}

std::string title_text(const std::string& name, const TextStyle& style) {
    return name.empty() ? "" : paragraph_text(shown(name, style), 0, Paint::bold, style) + '\n';
}

} // namespace zarven::tool
