/// The user's guide in a window of its own: contents, text with its pictures, search.
///
/// The text is Markdown. The contents are its headings of the second to fourth level; a window of the program
/// finds its section by the heading's text.
#pragma once

#include <QVector>

#include "shell/session.h"
#include "widgets/fenetre.h"

class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;
class texte_guide;

class guide : public fenetre {
    Q_OBJECT
public:
    explicit guide(session& s, QWidget* parent = nullptr);

    /// The guide's file in the program's folder, empty without one.
    static QString fichier(const session& s);
    /// The page that tells of a window, -1 when none does.
    static int page_de(const QString& fenetre);
    /// The heading of a page, empty for no page.
    static QString titre_page(int page);

    /// Goes to the section of a window.
    void montre_page(int page) override;
    /// Goes to the entry of a number of the étude, "energie.bat_c", in the reference of the settings.
    void montre_champ(const QString& chemin);

protected:
    void changeEvent(QEvent* e) override;

private:
    QWidget* construit_recherche();
    void lit();
    void construit_sommaire();
    void va_a(QTreeWidgetItem* titre);
    void suit_lecture();
    void cherche(bool en_arriere);
    void suit_lien(const QUrl& lien);

    QString chemin_;
    QVector<int> entrees_; ///< place in the text of each entry of the reference, in its order
    QTreeWidget* sommaire_;
    texte_guide* texte_;
    QLineEdit* recherche_;
    QLabel* lab_recherche_;
    QVector<QTreeWidgetItem*> titres_; ///< in the order of the text
};
