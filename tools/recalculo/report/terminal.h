// What the place where a report goes can show: colour, characters beyond ASCII, so many columns. Reports take
// the answer as a TextStyle and ask nothing themselves.

#ifndef RECALCULO_TERMINAL_H
#define RECALCULO_TERMINAL_H

#include <string>
#include <string_view>
#include <vector>

namespace zarven::tool {

struct TextStyle {
    bool colour = false;
    /// Else plain ASCII.
    bool utf8 = true;
    /// Columns of the terminal; 0 for no limit.
    int width = 0;
};

enum class ColourChoice { automatic, always, never };

/// The words for them on the command line: auto, always, never.
const std::vector<std::string>& colour_choices();

/// The choice that a word stands for; any other word is auto.
ColourChoice colour_choice(std::string_view word);

/// What a process can find out about one of its streams.
struct Surroundings {
    bool is_terminal = false;
    /// As the terminal tells; 0 if it does not.
    int columns = 0;
    /// Variables of the environment; an unset one is empty.
    std::string columns_variable;
    std::string term;
    std::string no_color;
    bool is_utf8_locale = false;
};

/// Asks the system; `descriptor` is that of a standard stream.
Surroundings surroundings_of(int descriptor);

TextStyle style_for(const Surroundings& surroundings, ColourChoice choice);

/// The terminal obeys commands: it can erase a line.
bool can_redraw(const Surroundings& surroundings);

/// The characters that reports draw with.
struct Symbols {
    std::string_view ellipsis;
    std::string_view arrow;
    /// Between the parts of a heading.
    std::string_view dot;
    std::string_view dash;
    /// In a table of yes and no.
    std::string_view mark;
    std::string_view full_cell;
    std::string_view empty_cell;
};
const Symbols& symbols_of(const TextStyle& style);

/// A name or sentence from outside, ready to be shown.
std::string shown(std::string_view text, const TextStyle& style);

/// The same for a message on standard error.
std::string shown_as_message(std::string_view text);

/// Writes a message to standard error as a line. Where that is closed or full, the work goes on.
void write_message(std::string_view text);

enum class Paint { none, bold, red, yellow };

/// The text in that colour, if the style has colours.
std::string painted(std::string_view text, Paint paint, const TextStyle& style);

/// What stands beneath a heading is set back so far.
inline constexpr int body_indent = 2;

/// A shown text as lines, broken to the width; the first begins after `indent` blanks, the others further in.
/// On a terminal too narrow for that no line is set back.
std::string paragraph_text(const std::string& text, int indent, Paint paint, const TextStyle& style);

/// Shown parts of a heading in one line.
std::string joined(const std::vector<std::string>& parts, const TextStyle& style);

/// The name of a head-end as a title with an empty line after it; empty if it has none.
std::string title_text(const std::string& name, const TextStyle& style);

} // namespace zarven::tool

#endif
