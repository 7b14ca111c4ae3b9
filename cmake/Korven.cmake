# korven_library(<name> DEPS <targets...>)
# Builds every .cpp/.h/.ui of the calling folder into one library.
function(korven_library name)
    cmake_parse_arguments(K "" "" "DEPS" ${ARGN})
    file(GLOB _src CONFIGURE_DEPENDS
        ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h
        ${CMAKE_CURRENT_SOURCE_DIR}/*.ui ${CMAKE_CURRENT_SOURCE_DIR}/*.qrc)
    add_library(${name} STATIC ${_src})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    set_target_properties(${name} PROPERTIES AUTOUIC_SEARCH_PATHS ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${K_DEPS})
endfunction()

# korven_tests(DEPS <targets...>)
# Every test_*.cpp of the calling folder is one QtTest executable and one CTest test.
# Tests whose file name contains "_pg" need the PostgreSQL server of the test run and carry
# the label "postgresql"; every test carries the label of its folder.
function(korven_tests)
    cmake_parse_arguments(K "" "" "DEPS" ${ARGN})
    get_filename_component(_folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    file(GLOB _tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/test_*.cpp)
    foreach(_t ${_tests})
        get_filename_component(_n ${_t} NAME_WE)
        set(_exe ${_folder}_${_n})
        add_executable(${_exe} ${_t})
        target_link_libraries(${_exe} PRIVATE korven_testsupport ${K_DEPS} Qt6::Test)
        add_test(NAME ${_folder}.${_n} COMMAND ${_exe})
        set(_labels ${_folder})
        if(_n MATCHES "_pg")
            list(APPEND _labels postgresql)
        endif()
        set_tests_properties(${_folder}.${_n} PROPERTIES LABELS "${_labels}"
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;KORVEN_SOURCE_DIR=${CMAKE_SOURCE_DIR}"
            TIMEOUT 600)
    endforeach()
endfunction()
