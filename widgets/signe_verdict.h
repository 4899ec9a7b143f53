/// The sign of the verdict, the same everywhere: a filled disc with its mark, a word, and the sentence that
/// tells why.
#pragma once

#include <QWidget>

class QLabel;

enum class etat_verdict { inconnu, calcul, tient, tient_pas };

class signe_verdict : public QWidget {
    Q_OBJECT
public:
    explicit signe_verdict(QWidget* parent = nullptr);

    /// While a new verdict is computed the sentence of the last one stays: nothing flickers.
    void montre(etat_verdict etat, const QString& phrase = {});
    etat_verdict etat() const { return etat_; }
    QString phrase() const;

protected:
    void changeEvent(QEvent* e) override;

private:
    void habille();

    etat_verdict etat_ = etat_verdict::inconnu;
    QWidget* disque_;
    QLabel* lab_verdict_; ///< the word
    QLabel* lab_phrase_;
};
