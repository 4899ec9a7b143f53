/// A number box of one element of the étude, found by its name: text, unit, limits and meaning come from the
/// table of fields. Edits on loss of focus or Enter; an entry that is refused is told, and the old one comes
/// back.
#pragma once

#include <QLineEdit>

#include <functional>

#include "shell/session.h"

class boite_champ : public QLineEdit {
    Q_OBJECT
public:
    /// `champ` names the element: "omega_init[0]", "controle.gain".
    boite_champ(session& s, const QString& nom, const QString& champ, int caracteres = 7);
    /// The box shows `facteur` times the field's distance from `origine`, which must be more than 0.
    void echelle(double facteur, std::function<double(const etude&)> origine);
    /// In the place of what the table says; `titre` is the accessible name too.
    void decrit(const QString& titre, const QString& unite, const QString& aide);

    const QString& titre() const { return titre_; }
    const QString& unite() const { return unite_; }
    /// Shows the number as the étude has it.
    void montre();

signals:
    /// The étude has changed.
    void change();

protected:
    void focusOutEvent(QFocusEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    void valide();
    element_etude element() const;

    session& s_;
    std::string champ_;
    QString titre_, unite_, montre_;
    double facteur_ = 1;
    std::function<double(const etude&)> origine_;
    bool en_cours_ = false;
};
