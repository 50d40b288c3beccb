#include "platform/qt/qt_command_runner.h"

#include <QProcess>
#include <QStringList>
#include <QTemporaryFile>

#include "platform/qt/text_qt.h"

/// The input lies in a file, so that nobody has to stay and hand it over.
bool QtCommandRunner::Start(const std::string& program, const std::vector<std::string>& arguments,
                            const std::string& input) {
    QTemporaryFile file;
    if (!file.open() || file.write(input.data(), static_cast<qint64>(input.size())) < 0 ||
        !file.flush()) {
        return false;
    }
    QStringList list;
    for (const std::string& argument : arguments) {
        list.append(ToQt(argument));
    }
    QProcess process;
    process.setProgram(ToQt(program));
    process.setArguments(list);
    process.setStandardInputFile(file.fileName());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}
