#include "widgets/signe_verdict.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include "widgets/style.h"

namespace {

/// The disc: a tick, a cross, or three points while the verdict is being computed.
class disque : public QWidget {
public:
    explicit disque(const etat_verdict& etat) : etat_(etat) {
        setFixedSize(style::espace(6), style::espace(6));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const double c = width();
        p.setPen(Qt::NoPen);
        p.setBrush(style::couleur(etat_ == etat_verdict::tient       ? style::role::charge_utile
                                  : etat_ == etat_verdict::tient_pas ? style::role::perte
                                                                     : style::role::discret));
        p.drawEllipse(QRectF(1, 1, c - 2, c - 2));
        p.setPen(QPen(palette().color(QPalette::Base), c / 9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        if (etat_ == etat_verdict::tient) {
            p.drawPolyline(QPolygonF{{c * .28, c * .53}, {c * .44, c * .68}, {c * .73, c * .34}});
        } else if (etat_ == etat_verdict::tient_pas) {
            p.drawLine(QPointF(c * .33, c * .33), QPointF(c * .67, c * .67));
            p.drawLine(QPointF(c * .67, c * .33), QPointF(c * .33, c * .67));
        } else {
            for (const double x : {.3, .5, .7}) p.drawPoint(QPointF(c * x, c * .5));
        }
    }

private:
    const etat_verdict& etat_;
};

} // namespace

signe_verdict::signe_verdict(QWidget* parent)
    : QWidget(parent), disque_(new disque(etat_)), lab_verdict_(new QLabel), lab_phrase_(new QLabel) {
    setObjectName("signe_verdict");
    auto* rangee = new QHBoxLayout(this);
    rangee->setContentsMargins(style::espace(2), style::espace(1), style::espace(2), style::espace(1));
    rangee->setSpacing(style::espace(2));
    lab_verdict_->setObjectName("lab_verdict");
    QFont f = lab_verdict_->font();
    f.setBold(true);
    lab_verdict_->setFont(f);
    lab_phrase_->setObjectName("lab_phrase");
    lab_phrase_->setWordWrap(true);
    lab_phrase_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    rangee->addWidget(disque_);
    rangee->addWidget(lab_verdict_);
    rangee->addWidget(lab_phrase_, 1);
    habille();
}

void signe_verdict::montre(etat_verdict etat, const QString& phrase) {
    etat_ = etat;
    if (!phrase.isEmpty() || etat == etat_verdict::inconnu) lab_phrase_->setText(phrase);
    habille();
}

QString signe_verdict::phrase() const { return lab_phrase_->text(); }

void signe_verdict::habille() {
    lab_verdict_->setText(etat_ == etat_verdict::tient       ? "tient"
                          : etat_ == etat_verdict::tient_pas ? "ne tient pas"
                          : etat_ == etat_verdict::calcul    ? "calcul…"
                                                             : "pas de verdict");
    // The longest word keeps the sentence where it is.
    lab_verdict_->setMinimumWidth(lab_verdict_->fontMetrics().horizontalAdvance("pas de verdict"));
    setAccessibleName("Verdict : " + lab_verdict_->text());
    disque_->update();
}

void signe_verdict::changeEvent(QEvent* e) {
    if (e->type() == QEvent::PaletteChange) habille();
    QWidget::changeEvent(e);
}
