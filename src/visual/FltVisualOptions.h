#pragma once

/// What a visual of a database is made of.
struct FltVisualOptions {
    /// What becomes of the files that a database refers to.
    enum class References {
        follow, ///< Their scenes become part of the scene.
        skip,   ///< Their places stay empty.
        asFile, ///< An SoFile names each, and opens it once the scene is written and read again. The complete
                ///< conversion only.
    };

    /// What becomes of levels of detail.
    enum class LevelsOfDetail {
        all,     ///< The toolkit chooses by the distance from the eye.
        highest, ///< The finest of each group of ranges that meet. The complete conversion only.
        lowest,  ///< The coarsest. The complete conversion only.
    };

    /// The unit of the scene's coordinates.
    enum class Units {
        metres, ///< One unit is a metre, whatever the database stores.
        stored, ///< As the database stores them; external files are brought to its unit. The complete
                ///< conversion only.
    };

    /// A time of day. At some of them a database hides parts of itself.
    enum class TimeOfDay { day, dusk, night };

    /// Where the zero of the coordinates is.
    enum class Origin {
        stored, ///< Where the database has it.
        centre, ///< In the middle of a database that lies so far from its zero that floats can't hold it well;
                ///< its offset is told. Any other one stays where it is. The complete conversion only.
    };

    /// Which nodes of a scene bear the names of the database. The toolkit searches for each name that it
    /// gives back, so that a scene of very many named nodes takes long to let go.
    enum class Names {
        all,    ///< Each that the database has a name for.
        unique, ///< Those whose name no other one has. The complete conversion only.
        none,   ///< Not one. The complete conversion only.
    };

    References references = References::follow;          ///< What becomes of external files.
    LevelsOfDetail levelsOfDetail = LevelsOfDetail::all; ///< Which levels of detail there are.
    Units units = Units::metres;                         ///< The unit of the coordinates.
    Origin origin = Origin::stored;                      ///< The zero of the coordinates.
    Names names = Names::all;                            ///< The nodes that bear their names.

    /// The time of day that is shown: Objects that say so are hidden then. The complete conversion only.
    TimeOfDay time = TimeOfDay::day;

    /// Whether to look for records again after damage. The exact conversion never does.
    bool salvage = true;
};
