// Empty: the target that it belongs to exists for the precompiled headers of the test framework.
