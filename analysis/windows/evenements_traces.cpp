#include "analysis/windows/evenements_traces.h"

#include "analysis/calcul_courbes.h"
#include "widgets/style.h"

QVector<genre_trace> genres_evenements() {
    using style::role;
    const std::pair<role, QChar> signes[nb_evenements] = {
        {role::eclipse, u'◗'}, {role::soleil, u'◖'}, {role::batterie, u'▲'},
        {role::perte, u'▼'},   {role::alerte, u'!'}, {role::charge_utile, u'✓'},
        {role::alerte, u'×'},  {role::perte, u'◆'},  {role::terre, u'●'}};
    QVector<genre_trace> g;
    for (int k = 0; k < nb_evenements; ++k)
        g << genre_trace{QString::fromUtf8(nom_evenement(static_cast<evenement>(k))),
                         style::couleur(signes[k].first), signes[k].second};
    return g;
}
