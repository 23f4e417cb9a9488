// The formatted texts of the About and Help windows, kept as tables of paragraphs
// with the program itself (nothing is read from a file at run time) and typeset
// into a rich-text document: green serif headings, a sans-serif body, arrow bullets
// with a hanging indent and "o" sub-items indented deeper.
#pragma once

#include <span>

class QTextDocument;

namespace pemlo {

enum class ParaKind {
    Heading,     // bold, green, Times New Roman 11 pt
    Body,        // Arial 10 pt, no indent
    Numbered,    // a numbered entry with a hanging indent (the number is in the text)
    Bullet,      // first level: arrow bullet, hanging indent
    SubBullet,   // second level: "o" in Courier New, deeper hanging indent
    Note,        // indented closing note
    Blank,       // an empty paragraph between items
};

// One paragraph: text, then an underlined part, then the rest. Texts are UTF-8 and
// kept exactly, blanks included; the parts after the first may be empty.
struct RichParagraph {
    ParaKind kind;
    const char* text;
    const char* underlined = "";
    const char* after = "";
};

// Replaces the document's contents with the paragraphs.
void TypesetRichText(QTextDocument& document, std::span<const RichParagraph> paragraphs);

}  // namespace pemlo
