#pragma once

namespace ZemTreeRelayTreeResources {

// Makes the classes of this library that a file can name known to NodeFactory and GraphManagerFactory:
// UniversalGeneralContainer, HierarchicalContainer, the contact units, the result units and both graph managers.
//
// It runs from a static initialiser when the library is loaded. ProjectFile calls it again before every read,
// so that a program linked against the static archive has the registrations finished before its first file
// even where the linker left the initialiser's object out. A program that reads nodes through Node::setXml
// itself, without ProjectFile, calls it once at start-up when it links statically. Further calls change
// nothing; the first registration of a name wins, as everywhere in NodeFactory.
void registerTypes();

} // namespace ZemTreeRelayTreeResources
