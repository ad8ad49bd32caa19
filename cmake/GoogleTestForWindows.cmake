# GoogleTest for the Windows build: Debian ships the sources beside the library for its own system.
set(googletest /usr/src/googletest/googletest)
add_library(windows_gtest STATIC ${googletest}/src/gtest-all.cc ${googletest}/src/gtest_main.cc)
target_include_directories(windows_gtest SYSTEM PUBLIC ${googletest}/include)
target_include_directories(windows_gtest SYSTEM PRIVATE ${googletest})
target_compile_options(windows_gtest PRIVATE -w)
add_library(GTest::gtest ALIAS windows_gtest)
add_library(GTest::gtest_main ALIAS windows_gtest)
