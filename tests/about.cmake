# Custom resources and the about box.
if(WIN32)
    tamrix_suite(custom_resource
        SOURCES custom_resource_test.cpp windows/resource_fixture.cpp windows/test_resources.rc)
else()
    tamrix_suite(custom_resource
        SOURCES custom_resource_test.cpp native/resource_fixture.cpp native/custom_resource_faults_test.cpp)
endif()
