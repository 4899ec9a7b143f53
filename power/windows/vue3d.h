/// The three-dimensional view: Earth, Sun and satellite at the state of the session. The mouse turns it, the
/// wheel zooms, T and S (or its two buttons) centre it on the Earth or on the satellite.
#pragma once

#include <QImage>
#include <QPoint>
#include <QWidget>

#include "power/windows/scene3d.h"
#include "shell/session.h"

class QOpenGLWidget;

class vue3d : public QWidget {
    Q_OBJECT
public:
    /// Without OpenGL, or with `sans_opengl`, a sentence takes the place of the drawing.
    explicit vue3d(session& s, QWidget* parent = nullptr, bool sans_opengl = false);

    /// True when a context for the drawing can be made on this machine.
    static bool opengl_disponible();
    bool dessine() const { return surface_ != nullptr; }

    const camera3d& camera() const { return camera_; }
    /// The frame as it stands; a null picture without OpenGL.
    QImage image();

    QSize sizeHint() const override;

public slots:
    /// Shows the session's state: the satellite, the Sun, the panels at `pan_angle`.
    void redessine();
    void centre_terre();
    void centre_satellite();

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void showEvent(QShowEvent* e) override;

private:
    void change_zoom(double facteur);
    void suit_cible();
    double zoom_de_l_orbite() const;

    session& s_;
    camera3d camera_;
    QOpenGLWidget* surface_ = nullptr;
    QPoint souris_;
    bool glisse_ = false, sur_satellite_ = false, zoom_choisi_ = false;
};
