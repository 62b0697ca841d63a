'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const { unbuiltFiles } = require('../../../tools/support/source-lists.js');

test('the list check finds C++ files that nothing builds', () => {
  const makefiles = new Map([
    ['core/CMakeLists.txt', 'add_library(core\n  "unit/A.cpp"\n  unit/A.h) # unit/B.cpp'],
    ['core/test/CMakeLists.txt', 'add_executable(t ATest.cpp)'],
  ]);
  const sources = new Map([
    ['core/unit/A.cpp', '#include "unit/A.h"\n#include "unit/detail/C.h"\n'],
    ['core/unit/A.h', ''],
    ['core/unit/detail/C.h', '  #  include "D.h"'],
    ['core/unit/detail/D.h', '#include "core/unit/detail/E.h"'],
    ['core/test/ATest.cpp', ''],
    ['core/unit/B.cpp', ''],
    ['core/unit/detail/E.h', '#include "F.h"\n'],
    ['core/unit/detail/OldC.h', '#include "OldC.h"'],
    ['ATest.cpp', ''],
  ]);
  assert.deepEqual(unbuiltFiles(sources, makefiles), [
    'core/unit/B.cpp',
    'core/unit/detail/OldC.h',
    'ATest.cpp',
  ]);
});
