// orvCore/system/inspection/orvInspectable.h
#pragma once

// What a class header needs to declare itself inspectable and list its attributes.
#include "system/inspection/orvAccessorsAttribute.h"
#include "system/inspection/orvAttribute.h"
#include "system/inspection/orvContainerAccessorsAttribute.h"
#include "system/inspection/orvRTTI.h"
