include(GNUInstallDirs)

# Compiler settings shared by every ts4 target: warnings and, for test
# builds, the sanitizers. Applied through an interface target so that
# consumers of the installed package do not inherit them.
add_library(ts4_build_options INTERFACE)
target_compile_options(ts4_build_options INTERFACE -Wall -Wextra -Wpedantic)
if(TS4_WERROR)
  target_compile_options(ts4_build_options INTERFACE -Werror)
endif()
if(TS4_SANITIZE)
  target_compile_options(ts4_build_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(ts4_build_options INTERFACE -fsanitize=address,undefined)
endif()

# Links the build options to a target without exporting them.
function(ts4_apply_options target)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:ts4_build_options>)
endfunction()
