#include "app/Resources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace leafwright {

QString resourcePath(const QString &fileName) {
    const QDir programs(QCoreApplication::applicationDirPath());
    for (const char *place : {"../share/leafwright", "../docs"}) {
        QString path = QDir::cleanPath(programs.filePath(QString::fromLatin1(place) + u'/' + fileName));
        if (QFileInfo::exists(path)) return path;
    }
    return {};
}

}  // namespace leafwright
