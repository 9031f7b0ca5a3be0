// References to the host's instances, strings and texts, and who holds them.
#include "host/values/counted.h"

#include "host/values/accounts.h"
#include "host/values/object.h"
#include "host/values/strings.h"

namespace qzlhost {

bool Counts::Adopt()
{
    uint64_t word = word_.load();
    do {
        if ((word >> 32) == (word & kHolders))
            return false;
    } while (!word_.compare_exchange_weak(word, word + 1));
    return true;
}

Counts::Outcome Counts::DropReference()
{
    uint64_t word = word_.load();
    do {
        if ((word >> 32) <= (word & kHolders))
            return Outcome::NotHeld;
    } while (!word_.compare_exchange_weak(word, word - kReference));
    return (word >> 32) == 1 ? Outcome::Last : Outcome::Alive;
}

template <typename T>
void Unlock(T *thing)
{
    if (!thing)
        return;
    switch (thing->counts.DropReference()) {
    case Counts::Outcome::Alive:
        break;
    case Counts::Outcome::Last:
        Destroy(thing);
        break;
    case Counts::Outcome::NotHeld:
        RecordMistake("gave back a reference to " + Describe(thing) + " that it does not hold");
        break;
    }
}

template <typename T>
void AdoptReference(T *thing)
{
    if (!thing->counts.Adopt()) {
        RecordMistake("handed over " + Describe(thing) + " without the reference that belongs to it");
        thing->counts.AddHolder();
    }
}

template void Unlock(Instance *);
template void Unlock(String *);
template void Unlock(Text *);
template void AdoptReference(Instance *);
template void AdoptReference(String *);
template void AdoptReference(Text *);

} // namespace qzlhost
