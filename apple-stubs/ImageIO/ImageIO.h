// <ImageIO/ImageIO.h>
#pragma once

#include <ImageIO/CGImageSource.h>
#include <ImageIO/CGImageDestination.h>
