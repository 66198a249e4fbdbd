#pragma once

#include "render/shapes/Node.h"

/// How the kinds of nodes other than classes are drawn.

namespace render {

void prepareBox(const Context& context, Node& node);
void drawBox(const Context& context, const Node& node, Svg& svg);
void prepareLabel(const Context& context, Node& node);
void drawLabel(const Context& context, const Node& node, Svg& svg);
void prepareNote(const Context& context, Node& node);
void drawNote(const Context& context, const Node& node, Svg& svg);
void preparePackage(const Context& context, Node& node);
void drawPackage(const Context& context, const Node& node, Svg& svg);
void prepareUseCase(const Context& context, Node& node);
void drawUseCase(const Context& context, const Node& node, Svg& svg);
void prepareComponent(const Context& context, Node& node);
void drawComponent(const Context& context, const Node& node, Svg& svg);
void prepareDeployed(const Context& context, Node& node);
void drawProcessor(const Context& context, const Node& node, Svg& svg);
void drawDevice(const Context& context, const Node& node, Svg& svg);
void prepareState(const Context& context, Node& node);
void drawState(const Context& context, const Node& node, Svg& svg);
void drawActivity(const Context& context, const Node& node, Svg& svg);
void prepareDecision(const Context& context, Node& node);
void drawDecision(const Context& context, const Node& node, Svg& svg);
void prepareBar(const Context& context, Node& node);
void drawBar(const Context& context, const Node& node, Svg& svg);
void drawObject(const Context& context, const Node& node, Svg& svg);

void prepareLifeline(const Context& context, Node& node);
/// The head of a lifeline: an icon above its name, or a box around it.
void placeLifeline(const Context& context, Node& node);
void drawLifeline(const Context& context, const Node& node, Svg& svg);

/// The blocks of a node, centred in `rect`.
void drawCentred(const Context& context, const Node& node, const Rect& rect, Svg& svg);

} // namespace render
