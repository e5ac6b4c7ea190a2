#include "host/StartOffers.h"

#include <QPointer>

namespace host {

namespace {

struct Owned
{
    QPointer<QObject> owner;
    StartOffer offer;
};

QList<Owned> registry;

} // namespace

void offerAtStart(QObject *owner, const StartOffer &offer)
{
    registry.removeIf([](const Owned &one) { return one.owner.isNull(); });
    registry.append({owner, offer});
}

StartOffer startOffers()
{
    StartOffer all;
    for (const Owned &one : std::as_const(registry)) {
        if (one.owner.isNull())
            continue;
        // The host has offered before its modules.
        all.commands = one.offer.commands + all.commands;
        all.searches = one.offer.searches + all.searches;
        all.recent += one.offer.recent;
        all.figures += one.offer.figures;
        all.steps += one.offer.steps;
    }
    return all;
}

} // namespace host
