// A host that reads a model file, and writes down the model that it then has.
#include <kiv/KivModelFile.h>

#include <fstream>
#include <iostream>

int main(int argc, char** argv)
try {
    if (argc != 3)
        throw std::runtime_error("dump-model MODEL OUTPUT");
    const LoadedModel loaded = loadModel(argv[1]);
    std::ofstream output(argv[2]);
    writeModelFile(*loaded.model, output);
    return output.flush() ? 0 : 1;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
