// The list of all works.
#include "bench/work.h"

std::vector<Work> AllWorks()
{
    std::vector<Work> works;
    AddDeliveryWorks(works);
    AddNotificationWorks(works);
    AddStringWorks(works);
    AddScalarWorks(works);
    AddDateWorks(works);
    AddArrayWorks(works);
    AddDictionaryWorks(works);
    AddTreeWorks(works);
    AddClassRowWorks(works);
    AddWrapperWorks(works);
    AddBlockWorks(works);
    AddLoadWorks(works);
    return works;
}
