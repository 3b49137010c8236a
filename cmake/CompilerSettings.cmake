# Compiler warnings, sanitizers as one option for the whole tree, and ccache and a fast linker if they are installed.

add_compile_options(-Wall -Wextra -Wpedantic -Wno-unused-parameter)
# All code may be part of the module that the program loads. The module uses the program's own copy of each function.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
add_compile_options(-fno-semantic-interposition)
if(PAGORA_WERROR)
  add_compile_options(-Werror)
endif()
add_compile_definitions(
  PAGORA_VERSION="${PROJECT_VERSION}" PAGORA_IDENTIFIER="org.pagora.Pagora" _FILE_OFFSET_BITS=64)

find_program(PAGORA_CCACHE ccache)
if(PAGORA_CCACHE)
  # Without these settings ccache would not cache files that are compiled with a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}"
      CCACHE_NOHASHDIR=1 "${PAGORA_CCACHE}")
  set(CMAKE_C_COMPILER_LAUNCHER "${CMAKE_CXX_COMPILER_LAUNCHER}")
  add_compile_options(-fpch-preprocess)
endif()

find_program(PAGORA_LLD ld.lld)
if(PAGORA_LLD)
  add_link_options(-fuse-ld=lld)
endif()

if(PAGORA_SANITIZE)
  add_compile_options(-fsanitize=${PAGORA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${PAGORA_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC's data flow warnings report false positives in instrumented code.
    add_compile_options(-Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread -Wno-maybe-uninitialized
                        -Wno-restrict)
  endif()
  if(PAGORA_SANITIZE MATCHES "undefined")
    # Casts between unrelated empty bases in libstdc++ and sigc++ are not ours to check.
    add_compile_options(-fno-sanitize=vptr)
    add_link_options(-fno-sanitize=vptr)
  endif()
endif()

if(PAGORA_FUZZ)
  # Traces the branches that an input takes. Tracing all comparisons would take a third of the time, and the
  # dictionaries and corpora contain the important words.
  add_compile_options(-fsanitize=fuzzer-no-link -fno-sanitize-coverage=trace-cmp)
endif()

# Release builds are hardened; see packaging/check-hardening. Fortified functions need the optimizer, and sanitizers
# have checks of their own.
if(NOT PAGORA_SANITIZE)
  set(released "$<OR:$<CONFIG:Release>,$<CONFIG:RelWithDebInfo>>")
  add_compile_options(
    "$<${released}:-fstack-protector-strong;-fstack-clash-protection;-fcf-protection=full;-U_FORTIFY_SOURCE>"
    "$<${released}:-D_FORTIFY_SOURCE=3;-D_GLIBCXX_ASSERTIONS>")
  add_link_options("$<${released}:-Wl,-z,relro;-Wl,-z,now;-Wl,-z,noexecstack>")
  set(CMAKE_EXE_LINKER_FLAGS "${CMAKE_EXE_LINKER_FLAGS} -pie")
endif()
