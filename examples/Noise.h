#pragma once

/// @name Numbers that look like chance and are the same every time
/// @{

/// A number from 0 to 1 for each place of a lattice.
double lattice(int x, int y);

/// From 0 at one value to 1 at another, without a corner.
double smoothStep(double low, double high, double value);

/// Chance that changes smoothly, from 0 to 1, with features of such a size.
double noise(double x, double y, double size);
/// @}
