// What the control near_names brings along.
extern "C" __attribute__((visibility("default"))) float GetVekAppTemplate() {
    return 0.0f;
}
