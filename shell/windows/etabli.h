/// The workbench in the middle of the main window: pages that fill it, chosen on a rail of icons with words
/// at its left. A page is made when it is first shown.
#pragma once

#include <QWidget>

#include <functional>
#include <optional>

#include "widgets/page.h"

class QStackedWidget;
class QToolButton;
class QVBoxLayout;

class etabli : public QWidget {
    Q_OBJECT
public:
    explicit etabli(QWidget* parent = nullptr);

    /// Adds a page at the end of the rail.
    void ajoute(const QString& nom, const QString& titre, const QString& icone,
                std::function<page*()> fabrique);
    /// Brings a page forward; false when there is none of this name.
    bool montre(const QString& nom);
    QString courante() const;
    /// The page, made if need be; nullptr when there is none of this name.
    page* de(const QString& nom);
    /// Lets the page in front read the session again.
    void rafraichit();
    QStringList noms() const;
    QString titre(const QString& nom) const;

signals:
    void page_faite(page* p);
    void page_changee(const QString& nom);

private:
    struct place {
        QString nom, titre;
        QToolButton* bouton;
        std::function<page*()> fabrique;
        page* faite;
    };
    place* cherche(const QString& nom);

    QList<place> places_;
    std::optional<double> date_; ///< last date that a page has moved its cursor to [days]
    QVBoxLayout* rail_;
    QStackedWidget* milieu_;
};
