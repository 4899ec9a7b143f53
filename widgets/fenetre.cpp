#include "widgets/fenetre.h"

#include <QDataStream>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSettings>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

#include "shell/utilitaires.h"
#include "widgets/acces.h"
#include "widgets/style.h"
#include "widgets/verifications.h"

namespace {

QString cle_geometrie(const QWidget* w) { return "geometrie/" + w->objectName(); }

/// A rectangle that a screen holds, the title within reach.
bool tient_sur_un_ecran(const QRect& r) {
    const QScreen* e = QGuiApplication::screenAt(QPoint(r.left() + r.width() / 2, r.top() + style::espace()));
    if (!e) return false;
    const QRect place = e->availableGeometry();
    return r.width() > 0 && r.height() > 0 && r.width() <= place.width() && r.height() <= place.height() &&
           r.top() >= place.top();
}

} // namespace

bool restaure_geometrie(QWidget* w, const QByteArray& gardee) {
    // The rectangles are read before Qt sees them: it takes whatever the settings file holds, and a window of
    // millions of pixels takes the memory with it.
    QDataStream flux(gardee);
    flux.setVersion(QDataStream::Qt_4_0);
    quint32 marque = 0;
    quint16 majeure = 0, mineure = 0;
    QRect cadre, normale;
    flux >> marque >> majeure >> mineure >> cadre >> normale;
    constexpr quint32 marque_qt = 0x1D9D0CB;
    if (flux.status() != QDataStream::Ok || marque != marque_qt || !tient_sur_un_ecran(normale)) return false;
    qint32 ecran = 0, largeur = 0;
    quint8 maximisee = 0, pleine = 0;
    QRect geometrie;
    flux >> ecran >> maximisee >> pleine >> largeur >> geometrie;
    if (flux.status() != QDataStream::Ok) return false;
    return (maximisee || tient_sur_un_ecran(geometrie)) && w->restoreGeometry(gardee);
}

QScrollArea* defilee(QWidget* page) {
    /// As large as its page where there is room.
    class zone : public QScrollArea {
    public:
        QSize sizeHint() const override {
            const QSize bord(2 * frameWidth(), 2 * frameWidth());
            return widget() ? widget()->sizeHint() + bord : QScrollArea::sizeHint();
        }
    };
    auto* z = new zone;
    z->setWidget(page);
    z->setWidgetResizable(true);
    z->setFrameShape(QFrame::NoFrame);
    z->setFocusPolicy(Qt::NoFocus);
    return z;
}

fenetre::fenetre(marques& m, const QString& nom, const QString& titre, QWidget* parent)
    : QWidget(parent, Qt::Window), marques_(m), note_(new QLabel(this)), bandeau_(new QLabel(this)),
      cmd_bandeau_(new QPushButton(this)), contenu_(new QWidget(this)), pied_(new QHBoxLayout) {
    setObjectName(nom);
    setWindowTitle(titre);
    auto* pile = new QVBoxLayout(this);
    pile->setContentsMargins(0, 0, 0, 0);
    pile->setSpacing(0);
    note_->setObjectName("lab_note");
    note_->setWordWrap(true);
    note_->setTextFormat(Qt::RichText);
    note_->setMargin(style::espace());
    note_->setIndent(style::espace());
    note_->hide();
    connect(note_, &QLabel::linkActivated, this, [this](const QString& lien) {
        const QString onglet = lien.section('/', 1);
        emit demande_fenetre(lien.section('/', 0, 0), onglet.isEmpty() ? -1 : onglet.toInt());
    });
    pile->addWidget(note_);
    auto* haut = new QHBoxLayout;
    haut->setSpacing(0);
    haut->addWidget(bandeau_, 1);
    haut->addWidget(cmd_bandeau_);
    pile->addLayout(haut);
    pile->addWidget(contenu_, 1);
    pied_->addStretch(0);
    pile->addLayout(pied_);
    bandeau_->setObjectName("lab_bandeau");
    bandeau_->setWordWrap(true);
    bandeau_->setTextFormat(Qt::PlainText);
    bandeau_->setAutoFillBackground(true);
    bandeau_->setBackgroundRole(QPalette::ToolTipBase);
    bandeau_->setForegroundRole(QPalette::ToolTipText);
    bandeau_->setMargin(style::espace(2));
    bandeau_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    bandeau_->hide();
    cmd_bandeau_->setObjectName("cmd_bandeau");
    cmd_bandeau_->hide();
    connect(cmd_bandeau_, &QPushButton::clicked, this, [this] {
        const auto fait = std::exchange(propose_, nullptr);
        montre_bandeau({});
        if (fait) fait();
    });
}

fenetre::~fenetre() { fait_taire(this); }

void fait_taire(QWidget* fenetre) {
    for (QWidget* controle : fenetre->findChildren<QWidget*>()) controle->blockSignals(true);
}

void fenetre::montre_bandeau(const QString& texte) {
    bandeau_->setText(texte);
    bandeau_->setVisible(!texte.isEmpty());
    cmd_bandeau_->hide();
    propose_ = nullptr;
}

void fenetre::mentionne(const QString& mention) {
    QString titre = windowTitle();
    if (!mention_.isEmpty()) titre.remove(" – " + mention_);
    mention_ = mention;
    setWindowTitle(mention_.isEmpty() ? titre : titre + " – " + mention_);
}

void fenetre::montre_note(const QString& texte) {
    note_->setText(texte);
    note_->setVisible(!texte.isEmpty());
}

QString fenetre::bandeau() const { return bandeau_->isHidden() ? QString() : bandeau_->text(); }

void fenetre::propose_bandeau(const QString& texte, const QString& commande, std::function<void()> fait) {
    montre_bandeau(texte);
    propose_ = std::move(fait);
    cmd_bandeau_->setText(commande);
    cmd_bandeau_->show();
}

void fenetre::pose_pied(QWidget* pied) { pied_->insertWidget(0, pied, 1); }

void fenetre::pose_quitter(QPushButton* b) {
    style::bouton_pied(b);
    pied_->setContentsMargins(style::espace(2), 0, style::espace(2), style::espace(2));
    pied_->addWidget(b);
}

void fenetre::signale(const QString& texte) {
    constexpr int duree_ms = 6000;
    if (!bandeau_->isHidden()) return;
    montre_bandeau(texte);
    QTimer::singleShot(duree_ms, this, [this, texte] {
        if (bandeau_->text() == texte) montre_bandeau({});
    });
}

void fenetre::marque_changement() {
    marques_.config_modifiee = 1;
    emit configuration_changee();
}

void fenetre::resultats_calcules() {
    if (marques_.version_resultats == marques_.version_config) return;
    note_resultats(marques_);
    emit resultats_changes();
}

void fenetre::rapporte_faute(const QString& calcul, double date, const QString& raison,
                             const QString& conseil) {
    message(
        this, gravite::arret,
        QString("Faute numérique dans %1 : arrêt au %2.\n%3\n%4\nL'état reste tel que la faute l'a laissé.")
            .arg(calcul, QString::fromStdString(date_vers_texte(jour_vers_date(date))), raison,
                 conseil.isEmpty() ? "Vérifiez les réglages." : conseil));
}

bool fenetre::exige(bool condition, const QString& texte) {
    if (!condition) message(this, gravite::avertissement, texte);
    return condition;
}

bool fenetre::exige(bool condition, const QString& texte, const QString& nom, int page) {
    if (!exige(condition, texte)) emit demande_fenetre(nom, page);
    return condition;
}

void fenetre::renvoie(const QString& texte, const QString& nom, int page) {
    message(this, gravite::arret, texte);
    emit demande_fenetre(nom, page);
}

void fenetre::closeEvent(QCloseEvent* e) {
    // A box that is being edited takes its entry in when it loses the focus.
    if (QWidget* actif = focusWidget()) actif->clearFocus();
    if (geometrie_lue_) QSettings().setValue(cle_geometrie(this), saveGeometry());
    QWidget::closeEvent(e);
}

void fenetre::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_Escape && e->modifiers() == Qt::NoModifier) {
        e->accept();
        close();
        return;
    }
    if (e->matches(QKeySequence::HelpContents)) {
        e->accept();
        const QString champ = champ_du_controle(focusWidget());
        emit demande_aide(champ.isEmpty() ? objectName() : champ);
        return;
    }
    QWidget::keyPressEvent(e);
}

void fenetre::showEvent(QShowEvent* e) {
    if (!geometrie_lue_) {
        geometrie_lue_ = true;
        if (!restaure_geometrie(this, QSettings().value(cle_geometrie(this)).toByteArray()) && screen()) {
            // Room for the frame of the window around it.
            const QSize place = screen()->availableSize() - QSize(style::espace(4), style::espace(12));
            // Without a size of its own a window gets two thirds of the screen at most.
            const QSize voulue = testAttribute(Qt::WA_Resized) ? size() : size().expandedTo(sizeHint());
            resize(voulue.boundedTo(place));
        }
    }
    QWidget::showEvent(e);
}
