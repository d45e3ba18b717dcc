// <ImageIO/ImageIO.h>
#pragma once

#include <ImageIO/CGImageSource.h>
