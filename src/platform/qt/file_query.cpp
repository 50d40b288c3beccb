#include "platform/qt/file_query.h"

#include <QDir>
#include <QStringList>

#include "common/path_text.h"
#include "platform/qt/text_qt.h"

namespace {

// The name without the patterns that it may repeat in parentheses.
QString BareName(const QString& name) {
    const QString trimmed = name.trimmed();
    const qsizetype parenthesis = trimmed.lastIndexOf(QLatin1Char('('));
    return trimmed.endsWith(QLatin1Char(')')) && parenthesis >= 0
               ? trimmed.left(parenthesis).trimmed()
               : trimmed;
}

bool IsPattern(const QString& name) {
    return name.contains(QLatin1Char('*')) || name.contains(QLatin1Char('?'));
}

}  // namespace

QString NameFilters(std::string_view filter) {
    const QStringList parts = ToQt(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = parts[i + 1].split(QLatin1Char(';')).join(QLatin1Char(' '));
        filters += QStringLiteral("%1 (%2)").arg(BareName(parts[i]), patterns);
    }
    return filters.join(QStringLiteral(";;"));
}

StartingPoint StartOf(std::string_view initialName) {
    const std::string path = NativePath(initialName);
    const QString name = ToQt(BehindLastSeparator(path));
    const QString folder = ToQt(std::string_view(path).substr(0, LastSeparator(path)));
    return {!folder.isEmpty() && QDir(folder).exists() ? folder : QString(),
            IsPattern(name) ? QString() : name};
}
