include(GNUInstallDirs)

# Compiler settings shared by every ts4 target: warnings and, for test
# builds, the sanitizers. Applied through an interface target so that
# consumers of the installed package do not inherit them.
add_library(ts4_build_options INTERFACE)
target_compile_options(ts4_build_options INTERFACE -Wall -Wextra -Wpedantic)
# GCC 12 reports -Wrestrict inside libstdc++ for ordinary string concatenation
# at -O2 and above (GCC bug 105329, fixed in GCC 13): a false positive.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(ts4_build_options INTERFACE -Wno-restrict)
endif()
# Qt code states every conversion from 8-bit text (QStringLiteral, u""_s,
# QLatin1StringView, QString::fromUtf8) and gives every connection a context
# object. Only Qt's headers read these, so the core is unaffected. (Qt before
# 6.7 ignores the second; keep it for the newer Qt a packager may use.)
target_compile_definitions(ts4_build_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CONTEXTLESS_CONNECT)
if(TS4_WERROR)
  target_compile_options(ts4_build_options INTERFACE -Werror)
endif()
if(TS4_SANITIZE)
  target_compile_options(ts4_build_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(ts4_build_options INTERFACE -fsanitize=address,undefined)
endif()

# Fuzzing: every ts4 target is instrumented for coverage; the fuzz targets
# themselves link libFuzzer's driver.
if(TS4_BUILD_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "TS4_BUILD_FUZZ needs Clang (libFuzzer)")
  endif()
  target_compile_options(ts4_build_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Links the build options to a target without exporting them.
function(ts4_apply_options target)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:ts4_build_options>)
endfunction()
