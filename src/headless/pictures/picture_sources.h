// What pictures of models are made from.
#pragma once

namespace headless {

class Models;      // model/models.h
class Parameters;  // model/parameters.h
class Bodies;      // model/bodies.h

// Of one session, which must outlive it.
struct PictureSources {
  Models& models;                // formats are brought into memory
  const Parameters& parameters;  // for the texts of cells and notes
  Bodies& bodies;
};

}  // namespace headless
