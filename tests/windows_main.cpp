/// Starts the window tests: an application with settings of its own, and message boxes that never wait.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>

#include "tests/locale.h"
#include "widgets/style.h"

/// Settings and recovery copies of this process: an earlier one of the same number may have left some.
struct traces_du_programme {
    const QString reglages = QSettings().fileName();
    const QString copies = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);

    traces_du_programme() { efface(); }
    ~traces_du_programme() { efface(); }
    void efface() const {
        QFile::remove(reglages);
        if (copies.endsWith(QCoreApplication::applicationName())) QDir(copies).removeRecursively();
    }
};

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    prend_la_locale();
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName("kestrel-tests");
    QCoreApplication::setApplicationName(QString("tests-%1").arg(QCoreApplication::applicationPid()));
    style::applique(app);
    testing::InitGoogleTest(&argc, argv);
    const traces_du_programme efface;
    return RUN_ALL_TESTS();
}
