#ifndef ORVIA_PLATFORM_QT_TEXT_QT_H
#define ORVIA_PLATFORM_QT_TEXT_QT_H

#include <QString>
#include <string>
#include <string_view>

/// The UTF-8 text as Qt holds it; bytes that are no UTF-8 become replacement characters.
[[nodiscard]] inline QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The text in UTF-8.
[[nodiscard]] inline std::string FromQt(const QString& text) {
    return text.toStdString();
}

/// A caption that shows the text as it is: each "&" doubled, so that none marks a letter.
[[nodiscard]] inline QString EscapedAmpersands(std::string_view text) {
    return ToQt(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

/// A window title that shows the text as it is: each "[*]", which stands for the mark of a changed
/// document, doubled.
[[nodiscard]] inline QString EscapedTitle(std::string_view text) {
    return ToQt(text).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

#endif  // ORVIA_PLATFORM_QT_TEXT_QT_H
