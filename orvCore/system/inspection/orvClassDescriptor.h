// orvCore/system/inspection/orvClassDescriptor.h
#pragma once

// What a header needs to declare a class's descriptor: the descriptor with its declaration macros, and the
// descriptor holders of value types, from which a template class composes its identifier. The attribute classes
// are only declared here; the source that lists a class's attributes includes system/inspection/orvInspectable.h.
// Needs nothing above the containers, so containers and maths value types may declare descriptors.
#include "system/inspection/orvRTTI.h"
#include "system/inspection/orvRTTIAccessor.h"
