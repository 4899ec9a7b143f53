/// A box for a date, in universal time, from 1901 to 2099.
///
/// A date is typed as it is shown ("15/06/2025 10:20:30"), in digits alone, or in part: what is not typed
/// stays as shown. It is shown to the nearest second, and showing it changes nothing. Up, down and the wheel
/// step the part under the cursor; the button unfolds a calendar.
#pragma once

#include <QLineEdit>

#include <optional>

#include "shell/utilitaires.h"

class boite_date : public QLineEdit {
    Q_OBJECT
public:
    explicit boite_date(bool avec_heure, QWidget* parent = nullptr);

    /// Shows a day count; outside of the calendar's range its nearer end.
    void montre(double jour);
    /// Takes the entry in progress, as leaving the box does; false when it was refused and that was told.
    bool valide();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// The user has entered a date [days since 1950].
    void date_saisie(double jour);

protected:
    void keyPressEvent(QKeyEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void focusInEvent(QFocusEvent* e) override;

private:
    void change(const date_record& d);
    void pas(int n);
    void deroule_calendrier();

    bool avec_heure_;
    bool vient_d_entrer_ = false; ///< the click that brings the focus selects the whole date
    bool en_cours_ = false;
    date_record montree_;
};

/// The date of a text as it may be typed; parts that are missing are those of `base`. Empty for a text that
/// is no date.
std::optional<date_record> lit_date(const QString& texte, const date_record& base, bool avec_heure);
