// <Foundation/NSGeometry.h>
#pragma once

#include <CoreGraphics/CGGeometry.h>
#import <Foundation/NSObjCRuntime.h>

typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;

typedef NS_ENUM(NSUInteger, NSRectEdge){
    NSRectEdgeMinX = CGRectMinXEdge,
    NSRectEdgeMinY = CGRectMinYEdge,
    NSRectEdgeMaxX = CGRectMaxXEdge,
    NSRectEdgeMaxY = CGRectMaxYEdge,
};
