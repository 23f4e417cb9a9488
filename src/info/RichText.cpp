#include "info/RichText.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>

namespace pemlo {

namespace {

// Indents in pixels at the body's type size. The marker hangs to the left of the
// text so that wrapped lines align with the first word, not with the marker.
constexpr double BulletMargin = 30.0;
constexpr double SubBulletMargin = 66.0;
constexpr double NumberedMargin = 24.0;
constexpr double MarkerHang = 20.0;
constexpr double NoteMargin = 30.0;

// The arrow of the first-level items; the original symbol font is not portable,
// and this character looks the same.
const QString ArrowBullet = QString(QChar(0x27A2));

QTextCharFormat BodyFormat()
{
    QTextCharFormat format;
    format.setFontFamilies({QStringLiteral("Arial"), QStringLiteral("Liberation Sans")});
    format.setFontPointSize(10);
    return format;
}

QTextCharFormat HeadingFormat()
{
    QTextCharFormat format;
    format.setFontFamilies({QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif")});
    format.setFontPointSize(11);
    format.setFontWeight(QFont::Bold);
    format.setForeground(QColor(0, 128, 0));
    return format;
}

QTextCharFormat SubMarkerFormat()
{
    QTextCharFormat format = BodyFormat();
    format.setFontFamilies({QStringLiteral("Courier New"), QStringLiteral("Liberation Mono")});
    return format;
}

QTextBlockFormat BlockFormat(ParaKind kind)
{
    QTextBlockFormat block;
    block.setTopMargin(0);
    block.setBottomMargin(0);
    double margin = 0.0;
    double hang = 0.0;
    switch (kind) {
    case ParaKind::Bullet: margin = BulletMargin; hang = MarkerHang; break;
    case ParaKind::SubBullet: margin = SubBulletMargin; hang = MarkerHang; break;
    case ParaKind::Numbered: margin = NumberedMargin; hang = MarkerHang; break;
    case ParaKind::Note: margin = NoteMargin; break;
    default: break;
    }
    block.setLeftMargin(margin);
    block.setTextIndent(-hang);
    if (hang > 0.0) {
        // Tab stops count from where the first line starts, so the tab after the
        // marker reaches the text's own margin.
        block.setTabPositions({QTextOption::Tab(hang, QTextOption::LeftTab)});
    }
    return block;
}

void InsertParagraph(QTextCursor& cursor, const RichParagraph& paragraph, bool first)
{
    const QTextBlockFormat block = BlockFormat(paragraph.kind);
    const QTextCharFormat base = paragraph.kind == ParaKind::Heading ? HeadingFormat() : BodyFormat();
    if (first) {
        cursor.setBlockFormat(block);
        cursor.setBlockCharFormat(base);
    } else {
        cursor.insertBlock(block, base);
    }
    if (paragraph.kind == ParaKind::Bullet) {
        cursor.insertText(ArrowBullet + QLatin1Char('\t'), base);
    } else if (paragraph.kind == ParaKind::SubBullet) {
        cursor.insertText(QStringLiteral("o"), SubMarkerFormat());
        cursor.insertText(QStringLiteral("\t"), base);
    }
    cursor.insertText(QString::fromUtf8(paragraph.text), base);
    if (*paragraph.underlined != '\0') {
        QTextCharFormat underlined = base;
        underlined.setFontUnderline(true);
        cursor.insertText(QString::fromUtf8(paragraph.underlined), underlined);
    }
    cursor.insertText(QString::fromUtf8(paragraph.after), base);
}

}  // namespace

void TypesetRichText(QTextDocument& document, std::span<const RichParagraph> paragraphs)
{
    document.clear();
    document.setDefaultFont(QFont(QStringLiteral("Arial"), 10));
    QTextCursor cursor(&document);
    bool first = true;
    for (const RichParagraph& paragraph : paragraphs) {
        InsertParagraph(cursor, paragraph, first);
        first = false;
    }
}

}  // namespace pemlo
