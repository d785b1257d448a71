// What nearly every test includes, compiled once. A test still includes all that it uses.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/uPrecompiled.h"
