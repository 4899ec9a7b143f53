#include "widgets/boite_date.h"

#include <QAction>
#include <QCalendarWidget>
#include <QDate>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTime>
#include <QVBoxLayout>

#include <algorithm>

#include "widgets/conduite.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {

const QDate premier_jour(1901, 1, 1), dernier_jour(2099, 12, 31);
constexpr int place_date = 10; ///< characters of "dd/MM/yyyy"

QDate jour_de(const date_record& d) { return {d.an, d.mois, d.jour}; }

date_record record_de(const QDate& j, const QTime& t) {
    return {.an = int16_t(j.year()),
            .mois = int16_t(j.month()),
            .jour = int16_t(j.day()),
            .heure = int16_t(t.hour()),
            .minute = int16_t(t.minute()),
            .seconde = int16_t(t.second())};
}

/// Cuts a group of digits into parts of these widths, as many as it fills; none where one is left over.
QStringList tranches(const QString& chiffres, std::initializer_list<int> largeurs) {
    QStringList r;
    qsizetype place = 0;
    for (int l : largeurs) {
        if (place == chiffres.size()) return r;
        if (place + l > chiffres.size()) return {};
        r << chiffres.mid(place, l);
        place += l;
    }
    return place == chiffres.size() ? r : QStringList();
}

bool lit_jour(const QString& texte, date_record& d) {
    static const QRegularExpression entre("[/.\\-]");
    QStringList parts = texte.contains(entre) ? texte.split(entre) : tranches(texte, {2, 2, 4});
    if (parts.size() == 3 && parts[0].size() == 4) std::reverse(parts.begin(), parts.end());
    if (parts.isEmpty() || parts.size() > 3) return false;
    int16_t* const places[] = {&d.jour, &d.mois, &d.an};
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const bool annee = i == 2;
        if (annee ? parts[i].size() != 4 : parts[i].isEmpty() || parts[i].size() > 2) return false;
        *places[i] = parts[i].toShort();
    }
    return jour_de(d).isValid();
}

bool lit_heure(const QString& texte, date_record& d) {
    const QStringList parts = texte.contains(':') ? texte.split(':') : tranches(texte, {2, 2, 2});
    if (parts.isEmpty() || parts.size() > 3) return false;
    int16_t* const places[] = {&d.heure, &d.minute, &d.seconde};
    d.minute = d.seconde = 0;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        if (parts[i].isEmpty() || parts[i].size() > 2) return false;
        *places[i] = parts[i].toShort();
    }
    return QTime(d.heure, d.minute, d.seconde).isValid();
}

QString texte_de(const date_record& d, bool avec_heure) {
    const QString t = QString::fromStdString(date_vers_texte(d));
    return avec_heure ? t : t.left(place_date);
}

} // namespace

std::optional<date_record> lit_date(const QString& texte, const date_record& base, bool avec_heure) {
    static const QRegularExpression permis("^[0-9/.:\\- ]+$");
    const QString t = texte.simplified();
    if (!permis.match(t).hasMatch()) return {};
    date_record d = base;
    QString jour = t.section(' ', 0, 0), heure = t.section(' ', 1);
    if (heure.isEmpty() && jour.contains(':')) std::swap(jour, heure);
    static const QRegularExpression chiffres("^[0-9]{9,}$");
    if (heure.isEmpty() && chiffres.match(jour).hasMatch()) {
        heure = jour.mid(8);
        jour = jour.left(8);
    }
    if (!jour.isEmpty() && !lit_jour(jour, d)) return {};
    if (!heure.isEmpty() && (!avec_heure || !lit_heure(heure, d))) return {};
    return d;
}

boite_date::boite_date(bool avec_heure, QWidget* parent) : QLineEdit(parent), avec_heure_(avec_heure) {
    setFont(style::police_nombres(this));
    QAction* calendrier = addAction(style::icone("calendrier"), QLineEdit::TrailingPosition);
    calendrier->setToolTip("Calendrier (Alt+↓)");
    connect(calendrier, &QAction::triggered, this, &boite_date::deroule_calendrier);
    connect(this, &QLineEdit::editingFinished, this, &boite_date::valide);
}

QSize boite_date::sizeHint() const {
    const int texte = fontMetrics().horizontalAdvance(texte_de({}, avec_heure_) + "00");
    QStyleOptionFrame o;
    initStyleOption(&o);
    const int icone = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    return {
        style()->sizeFromContents(QStyle::CT_LineEdit, &o, {texte, fontMetrics().height()}, this).width() +
            icone + style::espace(2),
        QLineEdit::sizeHint().height()};
}

void boite_date::montre(double jour) {
    const double min = date_vers_jour(record_de(premier_jour, {0, 0}));
    const double max = date_vers_jour(record_de(dernier_jour, {23, 59, 59}));
    const double arrondi = avec_heure_ ? 0.5 / secondes_par_jour : 0.0;
    montree_ = jour_vers_date(jour >= min ? std::min(jour, max) + arrondi : min);
    setText(texte_de(montree_, avec_heure_));
}

bool boite_date::valide() {
    if (en_cours_ || !touchee(this)) return true;
    en_cours_ = true; // the message of a refusal takes the focus and gives it back
    const QString ancien = texte_de(montree_, avec_heure_);
    const std::optional<date_record> d = lit_date(text(), montree_, avec_heure_);
    const bool dans_le_calendrier = d && jour_de(*d) >= premier_jour && jour_de(*d) <= dernier_jour;
    if (!d)
        refuse_type(this, ancien);
    else if (!dans_le_calendrier)
        refuse_saisie(this, ancien,
                      "Date hors limite !! Saisissez une date : \n01/01/1901 <= Date <= 31/12/2099");
    else
        change(*d);
    en_cours_ = false;
    return dans_le_calendrier;
}

void boite_date::change(const date_record& d) {
    montree_ = d;
    montree_.ms = 0;
    setText(texte_de(montree_, avec_heure_));
    emit date_saisie(date_vers_jour(montree_));
}

/// Steps the part of the date under the cursor, as long as it stays within the calendar.
void boite_date::pas(int n) {
    if (!valide()) return;
    const int place = hasSelectedText() ? selectionStart() : cursorPosition();
    QDate j = jour_de(montree_);
    QTime t(montree_.heure, montree_.minute, montree_.seconde);
    constexpr int debut_mois = 3, debut_an = 6, debut_minute = 14, debut_seconde = 17;
    if (place > place_date && avec_heure_) {
        const int unite = place < debut_minute ? 3600 : place < debut_seconde ? 60 : 1;
        const QDateTime plus = QDateTime(j, t, Qt::UTC).addSecs(qint64(n) * unite);
        j = plus.date();
        t = plus.time();
    } else {
        j = place < debut_mois ? j.addDays(n) : place < debut_an ? j.addMonths(n) : j.addYears(n);
    }
    if (j < premier_jour || j > dernier_jour) return;
    change(record_de(j, t));
    setCursorPosition(place);
}

void boite_date::keyPressEvent(QKeyEvent* e) {
    const bool haut = e->key() == Qt::Key_Up, bas = e->key() == Qt::Key_Down;
    if (bas && (e->modifiers() & Qt::AltModifier)) return deroule_calendrier();
    if (haut || bas) return pas(haut ? 1 : -1);
    QLineEdit::keyPressEvent(e);
}

void boite_date::wheelEvent(QWheelEvent* e) {
    if (!hasFocus() || e->angleDelta().y() == 0) return e->ignore();
    pas(e->angleDelta().y() > 0 ? 1 : -1);
    e->accept();
}

void boite_date::focusInEvent(QFocusEvent* e) {
    QLineEdit::focusInEvent(e);
    vient_d_entrer_ = e->reason() == Qt::MouseFocusReason;
}

void boite_date::mouseReleaseEvent(QMouseEvent* e) {
    QLineEdit::mouseReleaseEvent(e);
    if (vient_d_entrer_ && !hasSelectedText()) selectAll();
    vient_d_entrer_ = false;
}

void boite_date::deroule_calendrier() {
    if (!valide()) return;
    auto* cadre = new QFrame(this, Qt::Popup);
    cadre->setAttribute(Qt::WA_DeleteOnClose);
    cadre->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    auto* pile = new QVBoxLayout(cadre);
    pile->setContentsMargins(0, 0, 0, 0);
    auto* calendrier = new QCalendarWidget;
    calendrier->setDateRange(premier_jour, dernier_jour);
    calendrier->setSelectedDate(jour_de(montree_));
    calendrier->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    pile->addWidget(calendrier);
    const auto choisit = [this, cadre](const QDate& j) {
        cadre->close();
        change(record_de(j, QTime(montree_.heure, montree_.minute, montree_.seconde)));
    };
    connect(calendrier, &QCalendarWidget::clicked, this, choisit);
    connect(calendrier, &QCalendarWidget::activated, this, choisit);
    cadre->move(mapToGlobal(QPoint(0, height())));
    cadre->show();
    calendrier->setFocus();
}
