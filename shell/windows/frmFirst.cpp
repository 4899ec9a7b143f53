#include "shell/windows/frmFirst.h"

#include <cmath>

#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "shell/windows/menu.h"
#include "widgets/style.h"

namespace {

/// The satellite over the limb of the Earth, its orbit and the name of the program. The scene is the night of
/// space on every palette.
class image_titre : public QWidget {
public:
    image_titre() { setMinimumSize(style::espace(140), style::espace(80)); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.scale(width() / 560.0, height() / 320.0);
        fond(p);
        terre(p);
        satellite(p);
        texte(p);
    }

private:
    static void fond(QPainter& p) {
        QLinearGradient ciel(0, 0, 0, 320);
        ciel.setColorAt(0, QColor(8, 12, 28));
        ciel.setColorAt(1, QColor(20, 34, 66));
        p.fillRect(QRectF(0, 0, 560, 320), ciel);
        p.setPen(Qt::NoPen);
        quint32 graine = 12345; // the same sky every time
        const auto hasard = [&graine](int n) {
            graine = graine * 1664525u + 1013904223u;
            return int((graine >> 8) % quint32(n));
        };
        for (int i = 0; i < 90; ++i) {
            p.setBrush(QColor(255, 255, 255, 60 + hasard(150)));
            const double r = 0.5 + hasard(10) / 12.0;
            p.drawEllipse(QPointF(hasard(560), hasard(300)), r, r);
        }
    }

    static void terre(QPainter& p) {
        const QPointF centre(280, 640);
        QRadialGradient halo(centre, 430);
        halo.setColorAt(0.93, QColor(120, 190, 255, 130));
        halo.setColorAt(1.0, QColor(120, 190, 255, 0));
        p.setBrush(halo);
        p.drawEllipse(centre, 430, 430);
        QRadialGradient globe(QPointF(380, 330), 420);
        globe.setColorAt(0, QColor(74, 144, 196));
        globe.setColorAt(1, QColor(10, 34, 74));
        p.setBrush(globe);
        p.drawEllipse(centre, 400, 400);
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(QColor(255, 196, 88, 170), 1.6, Qt::DashLine));
        p.drawEllipse(centre, 520, 468);
        p.setPen(Qt::NoPen);
    }

    static void satellite(QPainter& p) {
        p.save();
        p.translate(424, 186);
        p.rotate(18);
        for (const int cote : {-1, 1}) {
            const QRectF panneau(cote < 0 ? -92 : 26, -17, 66, 34);
            p.setBrush(QColor(34, 74, 140));
            p.setPen(QPen(QColor(206, 218, 236), 1.4));
            p.drawLine(QPointF(cote * 16, 0), QPointF(cote * 26, 0));
            p.drawRect(panneau);
            p.setPen(QPen(QColor(120, 160, 220), 0.8));
            for (int i = 1; i < 6; ++i)
                p.drawLine(QPointF(panneau.left() + 11 * i, -17), QPointF(panneau.left() + 11 * i, 17));
            p.drawLine(QPointF(panneau.left(), 0), QPointF(panneau.right(), 0));
        }
        p.setPen(QPen(QColor(90, 70, 20), 1));
        QLinearGradient corps(-16, -20, 16, 20);
        corps.setColorAt(0, QColor(255, 222, 140));
        corps.setColorAt(1, QColor(190, 140, 50));
        p.setBrush(corps);
        p.drawRect(QRectF(-16, -20, 32, 40));
        p.setPen(QPen(QColor(224, 230, 240), 1.6));
        p.setBrush(QColor(224, 230, 240));
        p.drawLine(QPointF(0, 20), QPointF(0, 32));
        p.drawChord(QRectF(-11, 27, 22, 18), 0, 180 * 16);
        p.restore();
    }

    void texte(QPainter& p) const {
        QFont f = font();
        f.setPixelSize(52);
        f.setBold(true);
        f.setLetterSpacing(QFont::AbsoluteSpacing, 6);
        p.setFont(f);
        p.setPen(QColor(244, 247, 252));
        p.drawText(QPointF(34, 86), "KESTREL");
        f.setPixelSize(16);
        f.setBold(false);
        f.setLetterSpacing(QFont::AbsoluteSpacing, 0.5);
        p.setFont(f);
        p.setPen(QColor(190, 206, 230));
        p.drawText(QPointF(37, 116), "Simulateur de petit satellite en orbite terrestre");
    }
};

} // namespace

frmFirst::frmFirst(session& s, QWidget* parent) : QWidget(parent), s_(s) {
    setObjectName("frmFirst");
    setWindowTitle("MERIDAN");
    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(0, 0, 0, style::espace(3));
    pile->setSpacing(style::espace(3));
    auto* image = new image_titre;
    image->setObjectName("pict_titre");
    image->setToolTip("KESTREL : orbite, énergie et contrôle d'attitude d'un petit satellite");
    pile->addWidget(image, 1);
    auto* cmdOK = new QPushButton("&OK");
    cmdOK->setObjectName("cmdOK");
    cmdOK->setToolTip("Entrer dans le programme");
    cmdOK->setDefault(true);
    cmdOK->setAutoDefault(true);
    cmdOK->setMinimumWidth(style::espace(28));
    pile->addWidget(cmdOK, 0, Qt::AlignHCenter);
    connect(cmdOK, &QPushButton::clicked, this, &frmFirst::cmdOK_clic);
    cmdOK->setFocus();
}

frmFirst::~frmFirst() = default;

void frmFirst::cmdOK_clic() {
    if (menu_) return;
    menu_ = std::make_unique<menu>(s_);
    menu_->show();
    close();
    menu_->propose_recuperation();
}
