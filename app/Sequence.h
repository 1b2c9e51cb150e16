#pragma once

namespace zelto {

// Builds the class tables.
void initialize();
// Registers the plug-ins.
void RuntimeInitExternalClasses();
// Creates the application and runs its event loop.
void Main();
// Releases the windows and the global objects.
void finalize();

}  // namespace zelto
