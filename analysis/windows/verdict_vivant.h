/// The verdict of the session as it stands, followed edit by edit: computed beside the window's thread on a
/// copy, an edit while it runs begins it anew. The signs of all windows show it.
#pragma once

#include <QObject>

#include "analysis/bilan.h"
#include "shell/session.h"
#include "widgets/signe_verdict.h"
#include "widgets/tache.h"

class verdict_vivant : public QObject {
    Q_OBJECT
public:
    explicit verdict_vivant(session& s, QObject* parent = nullptr);

    /// The settings may have changed: computes again where they have.
    void suit();
    /// A sign that shows the verdict from now on, for a window to keep.
    signe_verdict* nouveau_signe();
    /// The last budget that came ready; without turns before the first.
    const bilan& dernier() const { return bilan_; }

signals:
    void change(etat_verdict etat, const QString& phrase);
    /// With the verdict, the budget behind it.
    void bilan_pret(const bilan& b);

private:
    void montre(bilan b);

    session& s_;
    etude vue_;
    bool jamais_ = true;
    etat_verdict etat_ = etat_verdict::inconnu;
    QString phrase_;
    bilan bilan_;
    tache<bilan> tache_;
};
