/// The three-dimensional view: Earth, Sun and satellite at the state of the session. The mouse turns it, the
/// wheel zooms; buttons and keys choose what it looks at and from where, a menu what it shows.
///
/// A frame is drawn when the one before leaves the time for it: the steps of a run are never slowed, frames
/// are left out instead.
#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QPoint>
#include <QTimer>
#include <QWidget>

#include "power/windows/scene3d.h"
#include "shell/session.h"

class QAction;
class QOpenGLWidget;
class QVBoxLayout;
class legende3d;

class vue3d : public QWidget {
    Q_OBJECT
public:
    /// Without OpenGL, or with `sans_opengl`, a sentence takes the place of the drawing.
    explicit vue3d(session& s, QWidget* parent = nullptr, bool sans_opengl = false)
        : vue3d(s.orbit, s.power, s.periode, parent, sans_opengl) {}
    /// The view of records that are not the session's; its date is `p.j_courant`.
    vue3d(const orbit_state& o, const power_record& e, const simulation_period& p, QWidget* parent = nullptr,
          bool sans_opengl = false);

    /// True when a context for the drawing can be made on this machine.
    static bool opengl_disponible();
    bool dessine() const { return surface_ != nullptr; }

    const camera3d& camera() const { return camera_; }
    const affichage3d& affichage() const { return affichage_; }
    void affiche(const affichage3d& a);
    /// Temperatures are known (a run has set them): faces can be coloured by them.
    void temperatures_connues(bool oui);
    /// The frame as it stands; a null picture without OpenGL.
    QImage image();
    /// Frames drawn so far, for tests.
    int images_dessinees() const { return images_; }

    QSize sizeHint() const override;

public slots:
    /// Shows the records as they stand: the satellite, the Sun, the panels at `pan_angle`.
    void redessine();
    void centre_terre();
    void centre_satellite();
    /// From the Sun, on the Earth; from the satellite's zenith; along its track, from behind.
    void vue_du_soleil();
    void vue_du_zenith();
    void vue_de_la_trace();
    /// From behind and aside, where roll, pitch and yaw are all seen.
    void vue_de_cote();

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void showEvent(QShowEvent* e) override;
    void changeEvent(QEvent* e) override;

private:
    /// What the view stands on, and what its angles count from: the pole, the satellite's zenith, the Sun.
    enum class depuis { terre, satellite, soleil };

    void cree_boutons(QWidget* boutons);
    void cree_menu(QWidget* boutons, QVBoxLayout* colonne);
    void change_affichage();
    void choisit(depuis d, double angle_1, double angle_2, double zoom);
    void change_zoom(double facteur);
    void suit_cible();
    double zoom_de_l_orbite() const;
    void dessine_une_image();

    const orbit_state& orbit_;
    const power_record& power_;
    const simulation_period& periode_;
    camera3d camera_; ///< as it is drawn
    camera3d reglee_; ///< as the user has set it
    affichage3d affichage_;
    depuis depuis_ = depuis::terre;
    QOpenGLWidget* surface_ = nullptr;
    legende3d* legende_ = nullptr;
    QList<QAction*> fleches_, faces_;
    QPoint souris_;
    bool glisse_ = false, zoom_choisi_ = false;
    QTimer attente_;         ///< a frame that waits for its turn
    QElapsedTimer fini_;     ///< since the end of the last frame
    QElapsedTimer commence_; ///< since its start
    qint64 cout_ = 0;        ///< [ms] of the last frame
    int images_ = 0;
};
