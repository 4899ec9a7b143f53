/// A number box of one element of the étude, found by its name: text, unit, limits and meaning come from the
/// table of fields.
#pragma once

#include <functional>

#include "shell/session.h"
#include "widgets/boite_nombre.h"

class boite_champ : public boite_nombre {
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

protected:
    double stocke() const override;
    QString texte_stocke() const override;
    bool prend() override;
    /// Enter stays here, all selected: the next trial is typed at once.
    void keyPressEvent(QKeyEvent* e) override;

private:
    double origine() const { return origine_ ? origine_(s_) : 0; }
    element_etude element() const;

    session& s_;
    std::string champ_;
    QString titre_, unite_;
    double facteur_ = 1;
    std::function<double(const etude&)> origine_;
};
