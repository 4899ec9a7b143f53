/// "Chercher…" (Ctrl+K): finds an action, a page, a field or a variable by parts of its name and goes there.
#pragma once

#include <QDialog>
#include <QList>

#include <functional>

class QLineEdit;
class QListWidget;

/// A place that can be found.
struct lieu {
    QString titre;               ///< what is shown first: "Capacité nominale (Ah)"
    QString detail;              ///< where it stands: "Réglage · bat_c"
    QString mots;                ///< further words that find it
    std::function<void()> aller; ///< goes there
};

class recherche : public QDialog {
    Q_OBJECT
public:
    explicit recherche(const QList<lieu>& lieux, QWidget* parent = nullptr);

    /// The place that was chosen; empty when the box was left. Its `aller` is for the caller, once the box is
    /// gone.
    std::function<void()> choix() const { return choix_; }

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    void filtre();
    void prend();

    QList<lieu> lieux_;
    QStringList cles_; ///< of each place: its words without case and accents
    std::function<void()> choix_;
    QLineEdit* txt_recherche_;
    QListWidget* lst_recherche_;
};
