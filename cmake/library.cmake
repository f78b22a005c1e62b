# The library: libmoxcore, and libmoxccq4 built for each width of vectors from the same sources. A wider file lies in the
# folder where the dynamic linker looks first on a processor that has it (glibc-hwcaps), so that no dispatch code is needed.

add_library(moxcore SHARED ${PROJECT_SOURCE_DIR}/frame/moxcore.cpp)
target_include_directories(moxcore PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)

file(GLOB MOXCC_SOURCES CONFIGURE_DEPENDS
    frame/*.cpp models/*.cpp video/*.cpp demosaic/*.cpp tone/*.cpp math/*.cpp)
list(FILTER MOXCC_SOURCES EXCLUDE REGEX "frame/moxcore\\.cpp$")

# Tables are read-only data, written by small programs that run during the build: tools/<name>.cpp prints <name>.cpp.
set(generated ${PROJECT_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${generated})
foreach(name gamma_tables powx_data)
    add_executable(${name} ${PROJECT_SOURCE_DIR}/tools/${name}.cpp)
    add_custom_command(OUTPUT ${generated}/${name}.cpp COMMAND ${name} > ${generated}/${name}.cpp
        DEPENDS ${name} VERBATIM)
    list(APPEND MOXCC_TABLES ${generated}/${name}.cpp)
endforeach()

# The C symbols of the exports: for each source <name>.cpp that has a table of entries, symbols/<name>.inc.
file(GLOB MOXCC_PROTOTYPES CONFIGURE_DEPENDS include/moxcc/*.h)
set(symbols ${generated}/symbols)
file(MAKE_DIRECTORY ${symbols})
foreach(source ${MOXCC_SOURCES})
    cmake_path(GET source STEM name)
    list(APPEND MOXCC_SYMBOLS ${symbols}/${name}.inc)
endforeach()
add_executable(symbols ${PROJECT_SOURCE_DIR}/tools/symbols.cpp)
add_custom_command(OUTPUT ${generated}/symbols.stamp BYPRODUCTS ${MOXCC_SYMBOLS}
    COMMAND symbols ${symbols} ${MOXCC_PROTOTYPES} -- ${MOXCC_SOURCES}
    COMMAND ${CMAKE_COMMAND} -E touch ${generated}/symbols.stamp
    DEPENDS symbols ${MOXCC_PROTOTYPES} ${MOXCC_SOURCES} VERBATIM)

add_custom_target(moxcc_tables DEPENDS ${MOXCC_TABLES} ${generated}/symbols.stamp)

# moxcc_library(<target> <folder below lib> <rpath to libmoxcore> <instruction set options ...>)
function(moxcc_library target folder rpath)
    add_library(${target} SHARED ${MOXCC_SOURCES} ${MOXCC_TABLES})
    add_dependencies(${target} moxcc_tables)
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
        PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include ${symbols})
    # Results are defined operation by operation: nothing may be contracted or reassociated, and nothing folded at compile
    # time that the caller's rounding mode decides.
    target_compile_options(${target} PRIVATE ${ARGN} -mno-fma -ffp-contract=off -frounding-math
        $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wno-unsupported-floating-point-opt>)
    target_link_libraries(${target} PRIVATE moxcore $<BUILD_INTERFACE:moxcc_warnings>)
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME moxccq4
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib${folder}
        BUILD_RPATH "$ORIGIN${rpath}"
        BUILD_RPATH_USE_ORIGIN ON
        INSTALL_RPATH "$ORIGIN${rpath}")
endfunction()

# The options of each width. Those of code that is run on a processor without AVX-512 are to test that code there.
set(MOXCC_OPTIONS_SSE42 -msse4.2)
set(MOXCC_OPTIONS_AVX2 -mavx2)
if(MOXCC_EMULATE_AVX512)
    set(MOXCC_OPTIONS_AVX512 -mavx2 -DMOX_EMULATE_AVX512)
else()
    set(MOXCC_OPTIONS_AVX512 -mavx512f -mavx512bw -mavx512dq -mavx512vl -mavx512cd)
endif()
# The compiler's own headers for AVX-512 start from registers that nothing has set.
list(APPEND MOXCC_OPTIONS_AVX512 $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized> -Wno-uninitialized)

moxcc_library(moxccq4 "" "" ${MOXCC_OPTIONS_SSE42})
moxcc_library(moxccq4_v3 "/glibc-hwcaps/x86-64-v3" "/../.." ${MOXCC_OPTIONS_AVX2})
moxcc_library(moxccq4_v4 "/glibc-hwcaps/x86-64-v4" "/../.." ${MOXCC_OPTIONS_AVX512})
add_library(moxcc::moxcc ALIAS moxccq4)

foreach(target moxcore moxccq4 moxccq4_v3 moxccq4_v4)
    # Plain code that needs no C++ runtime: the C driver links it.
    target_compile_options(${target} PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics -fno-math-errno)
    set_target_properties(${target} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON)
    if(NOT MOXCC_SANITIZE)
        set_target_properties(${target} PROPERTIES LINKER_LANGUAGE C)
        target_link_options(${target} PRIVATE -Wl,--as-needed -Wl,--no-undefined -Wl,-z,relro,-z,now)
    endif()
endforeach()
