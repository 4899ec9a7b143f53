/// The program: the session, then the first screen, or the main window when files of a project are given.
#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QTimer>
#include <QWindow>

#include "power/windows/vue3d.h"
#include "shell/windows/frmFirst.h"
#include "shell/windows/menu.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {

/// Where the data files may stand: beside the program, installed, or in the sources that it was built from.
std::vector<std::string> sources_donnees() {
    const std::string ici = QCoreApplication::applicationDirPath().toStdString();
    return {ici + "/data", ici + "/../share/kestrel/data", ici + "/" DOSSIER_INSTALLE, DOSSIER_SOURCES};
}

/// Ends the program once a window stands drawn on the screen.
void finit_a_la_premiere_image(QWidget* w) {
    auto* regard = new QTimer(w);
    QObject::connect(regard, &QTimer::timeout, w, [w] {
        if (!w->windowHandle() || !w->windowHandle()->isExposed()) return;
        w->grab();
        QCoreApplication::exit(0);
    });
    regard->start(5);
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName("kestrel");
    QCoreApplication::setApplicationName("kestrel");
    QCoreApplication::setApplicationVersion(VERSION_KESTREL);
    QGuiApplication::setDesktopFileName("fr.kestrel.Kestrel");
    style::applique(app);

    session s;
    s.dossier_depart = trouve_dossier_depart(
        QCoreApplication::applicationDirPath().toStdString(),
        (QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/kestrel").toStdString(),
        sources_donnees());
    if (s.dossier_depart.empty())
        message(nullptr, gravite::avertissement,
                "Aucun dossier de travail ne peut être écrit : les données du programme ne seront pas "
                "trouvées. Vérifiez les droits de votre dossier personnel.");

    QStringList arguments = QCoreApplication::arguments();
    const bool essai = arguments.removeAll("--essai") > 0; // does it start, and how fast
    std::unique_ptr<menu> principale;
    std::unique_ptr<frmFirst> premiere;
    if (essai) {
        principale = std::make_unique<menu>(s);
        principale->show();
        finit_a_la_premiere_image(principale.get());
    } else if (arguments.size() > 1) {
        QStringList chemins = arguments.mid(1);
        for (QString& chemin : chemins) chemin = QDir::current().absoluteFilePath(chemin);
        principale = std::make_unique<menu>(s);
        principale->show();
        // Once the events run, so that a project that cannot be read ends them with its status.
        QTimer::singleShot(0, principale.get(), [&principale, chemins] {
            principale->ouvre_tous(chemins);
            principale->propose_recuperation();
        });
    } else {
        premiere = std::make_unique<frmFirst>(s);
        premiere->show();
    }
    // The graphics driver takes longer to load than a window to open: it is there when the 3D view is asked
    // for.
    QTimer::singleShot(1000, qApp, [] { vue3d::opengl_disponible(); });
    return QCoreApplication::exec();
}
