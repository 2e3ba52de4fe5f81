# The device: Windows CE on ARM, built with the bare-metal compiler and turned into the system's format by device/.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-none-eabi-gcc)
set(CMAKE_CXX_COMPILER arm-none-eabi-g++)
set(CMAKE_ASM_COMPILER arm-none-eabi-gcc)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

# ARMv4 without Thumb is the oldest processor that such devices have; the same code runs on the later ones.
set(qorv_arm "-march=armv4 -marm -mfloat-abi=soft")
set(CMAKE_ASM_FLAGS_INIT "${qorv_arm}")
# The compiler notes what older versions of itself passed otherwise; everything here comes from one version.
set(CMAKE_CXX_FLAGS_INIT "${qorv_arm} -Wno-psabi -fno-short-enums -fno-strict-aliasing -fno-threadsafe-statics \
-ffunction-sections -fdata-sections -D_GLIBCXX_EXTERN_TEMPLATE=0")
# Seen as a whole the library comes out an eighth smaller.
set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
set(QORV_FOR_DEVICE ON)
