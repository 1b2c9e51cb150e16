#pragma once

namespace zelto {

// Builds the class tables.
void initialize();
// Publishes the plug-ins.
void RuntimeInitExternalClasses();
// The application from its start to the end of its event loop.
void Main();
// Releases the windows and the global objects.
void finalize();

}  // namespace zelto
