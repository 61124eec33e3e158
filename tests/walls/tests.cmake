find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(check ${CMAKE_CURRENT_LIST_DIR}/check_includes.py)
add_test(NAME walls COMMAND Python3::Interpreter ${check} ${PROJECT_SOURCE_DIR}/src)
add_test(NAME walls.self_test COMMAND Python3::Interpreter ${check} --self-test)
