// The literal twin of the core: every rule written down once more, step by step, as plainly and as
// slowly as it reads. It includes nothing of the core and the core includes nothing of it, so a
// misreading would have to be made twice, independently, to stay unseen.
//
// Nothing here is optimised, and nothing here may be: lists are copied, elements are removed one
// index at a time and whole sets are walked again for every point, because that walk is what
// defines the order of the results. Compare with it bit for bit, order included.
//
// Coordinates are image pixels, y grows downwards. Point i of a set is (x[i], y[i]).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace oracle {

using Numbers = std::vector<double>;

// Two lists that are usually parallel; only a step graph ends with unequal lengths.
struct Points {
  Numbers x;
  Numbers y;
};

// Group k is (x[k], y[k]), two lists of equal length.
struct Groups {
  std::vector<Numbers> x;
  std::vector<Numbers> y;
};

// --- Numbers -------------------------------------------------------------------------------------

// Truncates towards zero; NaN and everything that does not fit gives the smallest 32-bit integer.
std::int32_t to_int32(double value);

// The product of two 32-bit integers, reduced modulo 2^32 as two's complement.
std::int32_t wrapping_product(std::int32_t a, std::int32_t b);

// The number of elements, taken as a signed 32-bit integer.
std::int32_t count_of(const Numbers& values);

double distance(double x1, double y1, double x2, double y2);
double average_of_numbers(const Numbers& values);  // NaN for nothing
Numbers array_distances(const Numbers& x, const Numbers& y);
int min_index(const Numbers& values);  // 1 for nothing
bool check_point_in_box(double px, double py, const Numbers& box_x, const Numbers& box_y);
Numbers replicate_vector(const Numbers& values);

// The first smallest and the first largest element; a NaN is found only in the first place.
// `values` holds at least one element.
double smallest(const Numbers& values);
double largest(const Numbers& values);

// --- Primitives ----------------------------------------------------------------------------------

struct Clusters {
  Points centroids;
  Points remaining;  // never gathered
  double radius;
};

// The mean of the m smallest distances from point 0 to the first `count` points without itself,
// m = ceil(number of distances * fraction), at most all of them; NaN when m < 1.
double cluster_radius(const Points& points, std::int32_t count, double fraction);
Clusters cluster(Numbers x, Numbers y, double fraction);

// Two lists, kept x and kept y; for an empty set a single list that holds one NaN.
std::vector<Numbers> point_density(Numbers x, Numbers y, double density);

bool check_solid_filled(const Numbers& x, const Numbers& y, double cell_size);

// --- Grouping ------------------------------------------------------------------------------------

struct Bubble {
  Points group;
  Points remain;
};

Bubble box_bubble(const Numbers& x, const Numbers& y, double box_size);
Groups fission(const Numbers& x, const Numbers& y, double step);
bool check_groups(const Numbers& a, const Numbers& b, double step);
Groups horizontal(const Numbers& x, const Numbers& y, double step);
Groups vertical_compartments(const Numbers& x, const Numbers& y, double width);

// --- Extractors ----------------------------------------------------------------------------------

struct Points_curves {
  Points points;
  Points curves;
  Points points_curves;
};

struct Bars {
  Points vertical;
  Points horizontal;
};

Points_curves points_curves(const Numbers& x, const Numbers& y, double step,
                            const std::string& method, double fraction);
Bars bars(const Numbers& x, const Numbers& y, double step, const std::string& method);
Points histogram(const Numbers& x, const Numbers& y, double width);
Points step_graph(const Numbers& x, const Numbers& y, double width);

// --- Dispatch ------------------------------------------------------------------------------------

// All x results and all y results of one mode; two empty lists for an unknown mode.
Points trace(const Numbers& x, const Numbers& y, double step, const std::string& mode,
             double fraction);

}  // namespace oracle
