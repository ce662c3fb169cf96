#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// The ten saved eyepoints and ten trackplanes of a file.
///
/// All ten eyepoints and all ten trackplanes are read from offset 8: they hold the same values, and the later
/// entries of the file are not walked.
class FltRecordEyePointTrackPlane : public PaletteFltRecord
{
public:
    /// A saved point of view, 272 bytes.
    struct FltEyePointStruct {
        double centerX = 0;
        double centerY = 0;
        double centerZ = 0;
        float yawAngle = 0;
        float pitchAngle = 0;
        float rollAngle = 0;
        float rotationMatrix[16] = {};
        float viewField = 0;
        float scale = 0;
        float nearClippingPlane = 0;
        float farClippingPlane = 0;
        float flyThroughMatrix[16] = {};
        float eyePointX = 0;
        float eyePointY = 0;
        float eyePointZ = 0;
        float flyThroughYaw = 0;
        float pitchThroughYaw = 0;
        float eyeVectorI = 0;
        float eyeVectorJ = 0;
        float eyeVectorK = 0;
        std::int32_t flyThroughFlag = 0;
        std::int32_t orthoDrawingFlag = 0;
        std::int32_t isValidEyePointFlag = 0;
        std::int32_t imageOffsetX = 0;
        std::int32_t imageOffsetY = 0;
        std::int32_t imageZoom = 0;
        char reserved1[32] = {};
        std::int32_t reserved2 = 0;

        template <class Self, class Visitor>
        static void fields(Self& self, Visitor& visit)
        {
            visit("centerX", self.centerX);
            visit("centerY", self.centerY);
            visit("centerZ", self.centerZ);
            visit("yawAngle", self.yawAngle);
            visit("pitchAngle", self.pitchAngle);
            visit("rollAngle", self.rollAngle);
            visit.show("rotationMatrix: ");
            visit("rotationMatrix", self.rotationMatrix, dumpAs::rows(4));
            visit("viewField", self.viewField);
            visit("scale", self.scale);
            visit("nearClippingPlane", self.nearClippingPlane);
            visit("farClippingPlane", self.farClippingPlane);
            visit.show("flyThroughMatrix: ");
            visit("flyThroughMatrix", self.flyThroughMatrix, dumpAs::rows(4));
            visit("eyePointX", self.eyePointX);
            visit("eyePointY", self.eyePointY);
            visit("eyePointZ", self.eyePointZ);
            visit("flyThroughYaw", self.flyThroughYaw);
            visit("pitchThroughYaw", self.pitchThroughYaw);
            visit("eyeVectorI", self.eyeVectorI);
            visit("eyeVectorJ", self.eyeVectorJ);
            visit("eyeVectorK", self.eyeVectorK);
            visit("flyThroughFlag", self.flyThroughFlag);
            visit("orthoDrawingFlag", self.orthoDrawingFlag);
            visit("isValidEyePointFlag", self.isValidEyePointFlag);
            visit("imageOffsetX", self.imageOffsetX);
            visit("imageOffsetY", self.imageOffsetY);
            visit("imageZoom", self.imageZoom);
            visit("reserved1", self.reserved1, dumpAs::nothing);
            visit("reserved2", self.reserved2, dumpAs::nothing);
        }
    };

    /// A plane to draw on, 128 bytes.
    struct FltTrackPlaneStruct {
        static constexpr std::int32_t valid = -1; ///< As an activeFlag.

        /// The grid's angle without its fraction: beyond the range of 32 bits the nearest end of it, and 0
        /// for what is not a number.
        std::int32_t getWholeGridAngle() const;

        std::int32_t activeFlag = 0;
        std::int32_t reserved1 = 0;
        double originX = 0;
        double originY = 0;
        double originZ = 0;
        double alignmentX = 0;
        double alignmentY = 0;
        double alignmentZ = 0;
        double planeX = 0;
        double planeY = 0;
        double planeZ = 0;
        std::int8_t gridFlag = 0;
        std::int8_t gridType = 0;
        std::int8_t gridUnder = 0;
        std::int8_t reserved2 = 0;
        float gridAngle = 0;
        double gridSpacingX = 0;
        double gridSpacingY = 0;
        std::int8_t radialDirectionControl = 0;
        std::int8_t rectangularDirectionControl = 0;
        std::int8_t gridSnap = 0;
        std::int8_t reserved3 = 0;
        std::int32_t reserved4 = 0;
        double gridSize = 0;
        std::int32_t gridVisibilityMask = 0;
        std::int32_t reserved5 = 0;

        template <class Self, class Visitor>
        static void fields(Self& self, Visitor& visit)
        {
            if (Visitor::dumps && self.activeFlag != valid)
                return visit.show("activeFlag != -1 (it is not a valid trackplane)");
            visit("activeFlag", self.activeFlag);
            visit("reserved1", self.reserved1, dumpAs::nothing);
            visit("originX", self.originX);
            visit("originY", self.originY);
            visit("originZ", self.originZ);
            visit("alignmentX", self.alignmentX);
            visit("alignmentY", self.alignmentY);
            visit("alignmentZ", self.alignmentZ);
            visit("planeX", self.planeX);
            visit("planeY", self.planeY);
            visit("planeZ", self.planeZ);
            visit("gridFlag", self.gridFlag);
            visit("gridType", self.gridType);
            visit("gridUnder", self.gridUnder);
            visit("reserved2", self.reserved2, dumpAs::nothing);
            visit("gridAngle", self.gridAngle, dumpAs::nothing);
            visit.show("gridAngle: ", self.getWholeGridAngle());
            visit("gridSpacingX", self.gridSpacingX);
            visit("gridSpacingY", self.gridSpacingY);
            visit("radialDirectionControl", self.radialDirectionControl);
            visit("rectangularDirectionControl", self.rectangularDirectionControl);
            visit("gridSnap", self.gridSnap);
            visit.show("gridFlagReserved: ", self.alignmentX); // not what the file reserves
            visit("reserved3", self.reserved3, dumpAs::nothing);
            visit("reserved4", self.reserved4, dumpAs::nothing);
            visit("gridSize", self.gridSize);
            visit("gridVisibilityMask", self.gridVisibilityMask);
            visit("reserved5", self.reserved5, dumpAs::nothing);
        }
    };

    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::eyePointTrackPlane; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// Dumps one eyepoint. @return @p os
    virtual std::ostream& eyePointProperties(FltEyePointStruct const& eye, std::ostream& os) const;

    /// Dumps one trackplane; of one whose `activeFlag` isn't -1 only a line that says so. `gridAngle` prints
    /// without its fraction: beyond the range of 32 bits as the nearest end of it, and not a number as 0.
    /// @return @p os
    virtual std::ostream& trackPlaneProperties(FltTrackPlaneStruct const& plane, std::ostream& os) const;

    /// @name Filling one structure from its first byte
    /// @{
    virtual void getEyePointPropertiesFromData(FltEyePointStruct* eye, char* data);
    virtual void getTrackPlanePropertiesFromData(FltTrackPlaneStruct* plane, char* data);
    /// @}

    std::int32_t reserved = 0;
    FltEyePointStruct eyePoint[10];
    FltTrackPlaneStruct trackPlane[10];

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        auto const begin = visit.place();
        for (auto& eye : self.eyePoint) {
            visit.goTo(begin);
            visit.openElement("eyePoint");
            FltEyePointStruct::fields(eye, visit);
            visit.close();
        }
        for (auto& plane : self.trackPlane) {
            visit.goTo(begin);
            visit.openElement("trackPlane");
            FltTrackPlaneStruct::fields(plane, visit);
            visit.close();
        }
    }
};
