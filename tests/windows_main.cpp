/// Starts the window tests: an application with settings of its own, and message boxes that never wait.
#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>

#include "tests/locale.h"
#include "widgets/style.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    prend_la_locale();
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName("kestrel-tests");
    QCoreApplication::setApplicationName(QString("tests-%1").arg(QCoreApplication::applicationPid()));
    style::applique(app);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
