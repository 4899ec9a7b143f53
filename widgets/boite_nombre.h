/// The number box of every window: what it shares, whatever number it is bound to.
///
/// On leaving the box, or on Enter, a text that the hand has changed is read, checked and stored; the stored
/// number is shown back, and `change` tells of it when it is another one. A refused text is told and the old
/// one comes back. A text that the hand has not changed stores nothing, so that a number shown rounded keeps
/// its digits.
#pragma once

#include <QLineEdit>

class boite_nombre : public QLineEdit {
    Q_OBJECT
public:
    /// `caracteres` are the digits that it has room for.
    explicit boite_nombre(int caracteres, QWidget* parent = nullptr);

    /// Shows the stored number.
    void montre();
    /// Takes the text where the hand has changed it.
    void valide();

signals:
    /// Another number is stored.
    void change();

protected:
    virtual double stocke() const = 0;
    virtual QString texte_stocke() const = 0;
    /// Reads the text, checks and stores it; false when it was refused and that was told.
    virtual bool prend() = 0;
    /// The text last shown, which a refused entry goes back to.
    const QString& ancien() const { return montre_; }

private:
    QString montre_;
    bool en_cours_ = false;
};
