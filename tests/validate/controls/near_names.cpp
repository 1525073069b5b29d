// Brings along another library, in which the name that one would expect finds something.
extern "C" float GetVekAppTemplate();

// So that the other library is needed.
float (*volatile s_needed)() = GetVekAppTemplate;
