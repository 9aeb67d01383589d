// Test helper: expects a call to raise a vb::Error with a given number.
#pragma once

#include "vb/Error.h"

#include <gtest/gtest.h>

#define EXPECT_VB_ERROR(statement, expectedNumber)                                                 \
    do {                                                                                           \
        try {                                                                                      \
            statement;                                                                             \
            ADD_FAILURE() << #statement << " raised nothing, expected " << (expectedNumber);       \
        } catch (const vb::Error &e) {                                                             \
            EXPECT_EQ(e.number(), (expectedNumber)) << #statement << ": " << e.what();             \
        }                                                                                          \
    } while (false)
