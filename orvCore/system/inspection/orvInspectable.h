// orvCore/system/inspection/orvInspectable.h
#pragma once

// What a source needs to list a class's attributes: the descriptor and every attribute class. A header that only
// declares a descriptor includes system/inspection/orvClassDescriptor.h instead.
#include "system/inspection/orvAccessorsAttribute.h"
#include "system/inspection/orvAttribute.h"
#include "system/inspection/orvClassDescriptor.h"
#include "system/inspection/orvContainerAccessorsAttribute.h"
