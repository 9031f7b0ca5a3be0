// The records of the library's five classes.
#pragma once

#include "frame/class_records.h"

extern REALclassDefinition gNSNotificationObserverClass;
extern REALclassDefinition gNSNotificationClass;
extern REALclassDefinition gNSDistributedNotificationCenterClass;
extern REALclassDefinition gNSNotificationCenterClass;
extern REALclassDefinition gDRNotificationCenterClass;
